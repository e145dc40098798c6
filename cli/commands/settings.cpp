// SPDX-License-Identifier: MIT
#include "cli/commands/settings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "cli/clock.h"
#include "settings/given.h"
#include "settings/table.h"

namespace cli {

namespace {

constexpr std::size_t columns = 5;
using Row = std::array<std::string, columns>;

std::vector<Row> rows()
{
    std::vector<Row> table{{"option", "panel label", "unit", "default", "meaning"}};
    for (const settings::Setting& setting : settings::all_settings())
        table.push_back({settings::option_name(setting), std::string(setting.label),
                         std::string(settings::unit_name(setting.unit)),
                         settings::default_for_display(setting), std::string(setting.meaning)});
    return table;
}

std::string text_table()
{
    const std::vector<Row> table = rows();
    std::array<std::size_t, columns> widths{};
    for (const Row& row : table) {
        for (std::size_t i = 0; i + 1 < columns; ++i)
            widths[i] = std::max(widths[i], row[i].size());
    }
    std::string text;
    for (const Row& row : table) {
        for (std::size_t i = 0; i + 1 < columns; ++i)
            text += fmt::format("{:<{}}  ", row[i], widths[i]);
        text += row[columns - 1] + "\n";
    }
    return text;
}

std::string markdown_table()
{
    std::string text;
    for (const Row& row : rows()) {
        const bool heading = text.empty();
        const std::string option = heading ? row[0] : "`" + row[0] + "`";
        text += fmt::format("| {} | {} | {} | {} | {} |\n", option, row[1], row[2], row[3], row[4]);
        if (heading)
            text += "|---|---|---|---|---|\n";
    }
    return text;
}

} // namespace

SettingsVerb::SettingsVerb()
    : line_({"dastrel settings [--json|--markdown]"},
            "Print all settings of the command: option, panel label, unit, default, meaning.\n",
            "  dastrel settings\n"
            "  dastrel settings --json > meadow.json   (then edit, and use --settings)\n")
{
    line_.add_flag("--json", json_, "print the defaults as a file that --settings takes",
                   "printing");
    line_.add_flag("--markdown", markdown_, "print the table as Markdown", "printing");
}

ExitStatus SettingsVerb::run(Console& /*console*/)
{
    if (json_ && markdown_)
        throw UsageError("--json and --markdown exclude each other");
    fix_clock();
    if (json_)
        write_stdout(settings::default_settings_text());
    else
        write_stdout(markdown_ ? markdown_table() : text_table());
    return ExitStatus::done;
}

} // namespace cli
