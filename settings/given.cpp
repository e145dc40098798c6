// SPDX-License-Identifier: MIT
#include "settings/given.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "settings/errors.h"
#include "settings/file_text.h"
#include "settings/nearest.h"

namespace settings {

namespace {

/// Position of a key in the text. The object is flat, so the first match is the key.
std::optional<std::size_t> line_of_key(std::string_view text, const std::string& key)
{
    const std::string quoted = '"' + key + '"';
    for (std::size_t at = text.find(quoted); at != std::string_view::npos;
         at = text.find(quoted, at + 1)) {
        const std::size_t next = text.find_first_not_of(" \t\r\n", at + quoted.size());
        if (next != std::string_view::npos && text[next] == ':')
            return 1 + static_cast<std::size_t>(std::count(
                           text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    }
    return std::nullopt;
}

std::vector<std::string> field_names()
{
    std::vector<std::string> names;
    for (const Setting& setting : all_settings())
        names.emplace_back(setting.field);
    return names;
}

/// Limit of nesting, more than any settings file needs; destroying parsed values recurses once per
/// level.
constexpr int most_levels = 16;

/// Rejects duplicate keys, which the parser would accept, and too deeply nested values.
nlohmann::json parse_object(std::string_view text, const std::string& name)
{
    std::set<std::string> seen;
    const auto watch = [&](int depth, nlohmann::json::parse_event_t event, nlohmann::json& parsed) {
        if (depth >= most_levels)
            throw WrongSettings(fmt::format("{}: is nested more than {} levels deep; settings are "
                                            "one JSON object of plain values",
                                            name, most_levels));
        if (event == nlohmann::json::parse_event_t::key && depth == 1 &&
            !seen.insert(parsed.get<std::string>()).second)
            throw WrongSettings(
                fmt::format("{}: '{}' stands there twice", name, parsed.get<std::string>()));
        return true;
    };
    try {
        nlohmann::json object = nlohmann::json::parse(text, watch);
        if (object.is_object())
            return object;
    } catch (const nlohmann::json::parse_error& error) {
        const auto until = text.substr(0, std::min(error.byte, text.size()));
        throw WrongSettings(
            fmt::format("{}: line {}: is not JSON; `dastrel settings --json` prints a "
                        "file to start from",
                        name, 1 + std::count(until.begin(), until.end(), '\n')));
    } catch (const nlohmann::json::out_of_range&) {
        throw WrongSettings(fmt::format("{}: holds a number that is too large", name));
    }
    throw WrongSettings(fmt::format("{}: is not a JSON object; `dastrel settings --json` prints a "
                                    "file to start from",
                                    name));
}

/// Whether this is the output of `dastrel scatter --json`.
bool is_summary(const nlohmann::json& object)
{
    const auto settings = object.find("settings");
    return object.contains("schema") && settings != object.end() && settings->is_object();
}

} // namespace

std::vector<GivenSetting> read_settings_text(std::string_view text, const std::string& name)
{
    const nlohmann::json whole = parse_object(text, name);
    const nlohmann::json& object = is_summary(whole) ? whole["settings"] : whole;
    std::vector<GivenSetting> given;
    for (const auto& [key, value] : object.items()) {
        const auto line = line_of_key(text, key);
        const std::string where = line ? fmt::format("{}: line {}", name, *line) : name;
        const Setting* const setting = find_setting(key);
        if (setting == nullptr)
            throw WrongSettings(fmt::format("{}: unknown setting '{}'{}", where, key,
                                            did_you_mean(key, field_names())));
        std::string source = fmt::format("{}: {}", where, key);
        try {
            given.push_back({setting, parse_value(*setting, value), source});
        } catch (const ValueError& error) {
            throw WrongSettings(fmt::format("{}: {}", source, error.what()));
        }
    }
    return given;
}

std::vector<GivenSetting> read_settings_file(const std::filesystem::path& file)
{
    return read_settings_text(read_file_text(file), file.string());
}

std::vector<GivenSetting> merge_settings(std::vector<GivenSetting> under,
                                         std::vector<GivenSetting> over)
{
    std::erase_if(under, [&](const GivenSetting& lower) {
        return std::any_of(over.begin(), over.end(), [&](const GivenSetting& upper) {
            return upper.setting == lower.setting;
        });
    });
    under.insert(under.end(), std::make_move_iterator(over.begin()),
                 std::make_move_iterator(over.end()));
    return under;
}

std::string settings_text(std::span<const UsedSetting> used)
{
    nlohmann::ordered_json object = nlohmann::ordered_json::object();
    for (const UsedSetting& one : used)
        object[std::string(one.setting->field)] = to_json(*one.setting, one.value);
    // Names of maps in files need not be UTF-8, and JSON must be.
    return object.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::string default_settings_text()
{
    std::vector<UsedSetting> defaults;
    for (const Setting& setting : all_settings())
        defaults.push_back({&setting, parse_value(setting, setting.default_text)});
    return settings_text(defaults);
}

} // namespace settings
