// SPDX-License-Identifier: MIT
#include "cli/arguments/command_line.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include "cli/console/output.h"
#include "cli/errors.h"
#include "settings/nearest.h"
#include "settings/values.h"

namespace cli {

namespace {

constexpr std::size_t page_width = 80;
constexpr std::size_t text_column = 32;

/// The options in the order in which they were added.
std::vector<const CLI::Option*> options(const CLI::App& app) { return app.get_options(); }

OptionHelp help_of(const CLI::Option& option)
{
    OptionHelp help{{}, option.get_type_name(), option.get_description(), option.get_group()};
    for (const std::string& name : option.get_snames())
        help.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        help.names.push_back("--" + name);
    return help;
}

std::string heading_of(const OptionHelp& option)
{
    std::string names = fmt::format("{}", fmt::join(option.names, ", "));
    if (names.starts_with("--"))
        names.insert(0, "    ");
    return option.value.empty() ? names : names + " " + option.value;
}

/// Wraps a text at `width` characters, without breaking words; all lines after the first are
/// indented by `indent`.
std::string wrapped(std::string_view text, std::size_t width, std::size_t indent)
{
    std::string result;
    std::size_t column = 0;
    while (!text.empty()) {
        const std::string_view word = text.substr(0, text.find(' '));
        text.remove_prefix(std::min(text.size(), word.size() + 1));
        if (column != 0 && column + 1 + word.size() > width) {
            result += "\n" + std::string(indent, ' ');
            column = 0;
        }
        if (column != 0) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
    }
    return result;
}

std::string option_lines(const OptionHelp& option)
{
    std::string line = "  " + heading_of(option);
    line += line.size() + 2 > text_column ? "\n" + std::string(text_column, ' ')
                                          : std::string(text_column - line.size(), ' ');
    return line + wrapped(option.description, page_width - text_column, text_column) + "\n";
}

} // namespace

CommandLine::CommandLine(std::vector<std::string> usage, std::string intro, std::string examples)
    : usage_(std::move(usage)), intro_(std::move(intro)), examples_(std::move(examples)),
      app_(std::make_unique<CLI::App>())
{
    app_->set_help_flag();
    app_->allow_extras();
    add_flag("-h,--help", help_, "show this page", "other");
}

CommandLine::~CommandLine() = default;

void CommandLine::add_positionals(std::vector<std::string>& values)
{
    app_->add_option("arguments", values);
}

void CommandLine::add_flag(const std::string& names, bool& value, const std::string& description,
                           const std::string& group)
{
    app_->add_flag(names, value, description)->group(group);
}

void CommandLine::add_value(const std::string& names, std::string& value, std::string_view shown,
                            const std::string& description, const std::string& group)
{
    app_->add_option(names, value, description)
        ->type_name(std::string(shown))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast)
        ->group(group);
}

void CommandLine::add_repeatable(const std::string& name, std::vector<std::string>& values,
                                 std::string_view shown, const std::string& description,
                                 const std::string& group)
{
    app_->add_option(name, values, description)
        ->type_name(std::string(shown))
        ->allow_extra_args(false)
        ->group(group);
}

void CommandLine::add_switch(const std::string& name, std::string& value,
                             const std::string& description, const std::string& group)
{
    switches_.push_back(name);
    add_value(name, value, "[on|off]", description, group);
}

bool CommandLine::has(const std::string& name) const
{
    return app_->get_option_no_throw(name) != nullptr;
}

bool CommandLine::was_given(const std::string& name) const { return app_->count(name) != 0; }

std::vector<std::string> CommandLine::option_names() const
{
    std::vector<std::string> names;
    for (const CLI::Option* option : options(*app_)) {
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    }
    return names;
}

/// Joins each switch with its on/off word into one argument, so that the parser need not decide
/// whether the next argument belongs to the switch.
void CommandLine::join_switches(std::vector<std::string>& arguments) const
{
    for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
        if (std::find(switches_.begin(), switches_.end(), arguments[i]) == switches_.end())
            continue;
        const auto next = arguments.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        if (next != arguments.end() && settings::is_switch_word(*next)) {
            arguments[i] += "=" + *next;
            arguments.erase(next);
        } else {
            arguments[i] += "=on";
        }
    }
}

void CommandLine::add_other_word(std::string word, std::string option)
{
    other_words_.emplace(std::move(word), std::move(option));
}

/// The end of the message about an unknown option.
std::string CommandLine::suggestion(const std::string& name) const
{
    // a value may directly follow a short name
    const bool is_short = name.size() > 2 && name[1] != '-';
    const auto meant = other_words_.find(is_short ? name.substr(0, 2) : name);
    return meant != other_words_.end() ? fmt::format("; did you mean '{}'?", meant->second)
                                       : settings::did_you_mean(name, option_names());
}

void CommandLine::refuse_extras() const
{
    for (const std::string& extra : app_->remaining()) {
        if (extra.size() > 1 && extra[0] == '-') {
            const std::string name = extra.substr(0, extra.find('='));
            throw UsageError(fmt::format("unknown option '{}'{}", name, suggestion(name)));
        }
        throw UsageError(fmt::format("unexpected argument '{}'", extra));
    }
}

bool CommandLine::parse(std::vector<std::string> arguments)
{
    join_switches(arguments);
    std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the back
    try {
        app_->parse(std::move(arguments));
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string text = error.what();
        throw UsageError(fmt::format("{}: needs a value", text.substr(0, text.find(':'))));
    } catch (const CLI::ParseError& error) {
        throw UsageError(error.what());
    }
    if (help_) {
        write_stdout(help());
        return false;
    }
    refuse_extras();
    return true;
}

std::string CommandLine::usage() const
{
    std::string text;
    for (const std::string& line : usage_)
        text += (text.empty() ? "usage: " : "       ") + line + "\n";
    return text;
}

std::vector<OptionHelp> CommandLine::option_help() const
{
    std::vector<std::string> groups;
    for (const CLI::Option* option : options(*app_)) {
        const std::string& group = option->get_group();
        // The options common to all verbs were added first and are listed last.
        if (!group.empty() && group != "other" && !option->get_positional() &&
            std::find(groups.begin(), groups.end(), group) == groups.end())
            groups.push_back(group);
    }
    groups.emplace_back("other");
    std::vector<OptionHelp> all;
    for (const std::string& group : groups)
        for (const CLI::Option* option : options(*app_))
            if (option->get_group() == group && !option->get_positional())
                all.push_back(help_of(*option));
    return all;
}

std::string CommandLine::help() const
{
    std::string text = usage() + "\n" + intro_;
    std::string group;
    for (const OptionHelp& option : option_help()) {
        if (option.group != group)
            text += "\n" + option.group + "\n";
        group = option.group;
        text += option_lines(option);
    }
    return text + "\nexamples\n" + examples_;
}

} // namespace cli
