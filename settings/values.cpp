// SPDX-License-Identifier: MIT
#include "settings/values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace settings {

namespace {

constexpr std::array<std::string_view, 4> on_words{"on", "true", "yes", "1"};
constexpr std::array<std::string_view, 4> off_words{"off", "false", "no", "0"};

template <std::size_t count>
bool is_one_of(std::string_view text, const std::array<std::string_view, count>& words) noexcept
{
    for (const std::string_view word : words) {
        if (text == word)
            return true;
    }
    return false;
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// Removes `unit`, and blanks before it, from the end of `text`. Returns whether it was present.
bool take_unit(std::string_view& text, std::string_view unit)
{
    if (!text.ends_with(unit))
        return false;
    text = trimmed(text.substr(0, text.size() - unit.size()));
    return true;
}

/// Removes a leading plus sign, which from_chars rejects.
std::string_view without_plus(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    return text;
}

std::optional<double> read_double(std::string_view text)
{
    text = without_plus(text);
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error == std::errc::result_out_of_range && end == text.data() + text.size())
        throw ValueError(fmt::format("'{}' is too large or too small for a number", text));
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

std::string with_point(std::string_view text)
{
    std::string pointed(text);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    return pointed;
}

/// @param whole   the user's input including the unit, for messages
/// @param number  the part to parse
double parse_double(std::string_view number, std::string_view whole, std::string_view example)
{
    if (const auto read = read_double(number))
        return *read;
    const std::string pointed = with_point(number);
    if (pointed != number && read_double(pointed))
        throw ValueError(
            fmt::format("'{}' is not a number; write {}", whole, with_point(trimmed(whole))));
    throw ValueError(fmt::format("'{}' is not a number; write one such as {}", whole, example));
}

double from_percent(double percent) { return percent / 100.0; }
double from_degrees(double degrees) { return degrees * std::numbers::pi / 180.0; }

double parse_percent(std::string_view text)
{
    std::string_view number = trimmed(text);
    take_unit(number, "%");
    return from_percent(parse_double(number, text, "80%"));
}

double parse_fraction(std::string_view text)
{
    std::string_view number = trimmed(text);
    const bool percent = take_unit(number, "%");
    const double read = parse_double(number, text, "0.1");
    return percent ? from_percent(read) : read;
}

double parse_angle(std::string_view text)
{
    std::string_view number = trimmed(text);
    if (take_unit(number, "rad"))
        return parse_double(number, text, "10deg");
    take_unit(number, "deg");
    return from_degrees(parse_double(number, text, "10deg"));
}

std::int32_t parse_switch(std::string_view text)
{
    const std::string_view word = trimmed(text);
    if (is_one_of(word, on_words))
        return 1;
    if (is_one_of(word, off_words))
        return 0;
    throw ValueError(fmt::format("'{}' is neither on nor off", text));
}

std::int32_t parse_count(std::string_view text)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(parse_whole_number(text, Limits::min(), Limits::max()));
}

/// The number that `convert` turns into exactly `value`, near `guess`; the shortest text wins.
template <typename Convert>
std::optional<double> invert(double value, double guess, Convert convert)
{
    for (int digits = 1; digits <= 17; ++digits) {
        const auto rounded = read_double(fmt::format("{:.{}g}", guess, digits));
        if (rounded && convert(*rounded) == value)
            return rounded;
    }
    constexpr int steps = 4; // the two roundings of a conversion move the guess less than this
    double below = guess;
    double above = guess;
    for (int i = 0; i < steps; ++i) {
        below = std::nextafter(below, -std::numeric_limits<double>::infinity());
        above = std::nextafter(above, std::numeric_limits<double>::infinity());
        if (convert(below) == value)
            return below;
        if (convert(above) == value)
            return above;
    }
    return std::nullopt;
}

/// Formats integral values without a decimal point.
nlohmann::json json_number(double number)
{
    constexpr double exact_in_64_bits = 9007199254740992.0;
    if (number == std::trunc(number) && std::fabs(number) < exact_in_64_bits &&
        !(number == 0.0 && std::signbit(number)))
        return static_cast<std::int64_t>(number);
    return number;
}

} // namespace

bool is_switch_word(std::string_view text) noexcept
{
    return is_one_of(text, on_words) || is_one_of(text, off_words);
}

std::int64_t parse_whole_number(std::string_view text, std::int64_t lowest, std::int64_t highest)
{
    const std::string_view digits = without_plus(trimmed(text));
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool all_read = end == digits.data() + digits.size();
    if (error == std::errc::invalid_argument || !all_read)
        throw ValueError(fmt::format("'{}' is not a whole number", text));
    if (error == std::errc::result_out_of_range || number < lowest || number > highest)
        throw ValueError(
            fmt::format("{} is out of range; it must lie in {} .. {}", digits, lowest, highest));
    return number;
}

Value parse_value(const Setting& setting, std::string_view text)
{
    switch (setting.unit) {
    case Unit::count:
        return parse_count(text);
    case Unit::percent:
        return parse_percent(text);
    case Unit::fraction:
        return parse_fraction(text);
    case Unit::angle:
        return parse_angle(text);
    case Unit::on_off:
        return parse_switch(text);
    case Unit::map:
        break;
    }
    return std::string(text);
}

Value parse_value(const Setting& setting, const nlohmann::json& value)
{
    if (value.is_string())
        return parse_value(setting, std::string_view(value.get_ref<const std::string&>()));
    if (setting.unit == Unit::on_off && value.is_boolean())
        return value.get<bool>() ? 1 : 0;
    if (value.is_number()) {
        switch (setting.unit) {
        case Unit::count:
        case Unit::on_off:
            // Via the text, so that the error message for a fractional or too large number fits.
            return parse_value(setting, std::string_view(value.dump()));
        case Unit::percent:
            return from_percent(value.get<double>());
        case Unit::fraction:
            return value.get<double>();
        case Unit::angle:
            return from_degrees(value.get<double>());
        case Unit::map:
            break;
        }
    }
    switch (setting.unit) {
    case Unit::on_off:
        throw ValueError(fmt::format("{} is neither true nor false", value.dump()));
    case Unit::map:
        throw ValueError(
            fmt::format("{} is not a map's name in quotes, nor \"none\"", value.dump()));
    default:
        throw ValueError(fmt::format("{} is not a number", value.dump()));
    }
}

nlohmann::json to_json(const Setting& setting, const Value& value)
{
    if (const auto* name = std::get_if<std::string>(&value))
        return *name;
    if (const auto* whole = std::get_if<std::int32_t>(&value)) {
        if (setting.unit == Unit::on_off && (*whole == 0 || *whole == 1))
            return *whole == 1;
        return *whole;
    }
    const double number = std::get<double>(value);
    if (setting.unit == Unit::percent) {
        const double guess = number * 100.0;
        return json_number(invert(number, guess, from_percent).value_or(guess));
    }
    if (setting.unit == Unit::angle) {
        const auto degrees = invert(number, number * 180.0 / std::numbers::pi, from_degrees);
        // Use degrees only if they are short, that is, if the angle was given in degrees.
        if (degrees && fmt::format("{}", *degrees).size() <= 12)
            return json_number(*degrees);
        return fmt::format("{}rad", number);
    }
    return json_number(number);
}

} // namespace settings
