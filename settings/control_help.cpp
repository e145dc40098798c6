// SPDX-License-Identifier: MIT
#include "settings/control_help.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <string_view>
#include <variant>

#include <fmt/format.h>

#include "settings/values.h"

namespace settings {

namespace {

using modeler::ControlKind;

bool fits(Unit unit, ControlKind kind) noexcept
{
    switch (unit) {
    case Unit::count:
        return kind == ControlKind::integer;
    case Unit::percent:
        return kind == ControlKind::percent;
    case Unit::fraction:
        return kind == ControlKind::real;
    case Unit::angle:
        return kind == ControlKind::angle;
    case Unit::on_off:
        return kind == ControlKind::boolean;
    case Unit::map:
        break;
    }
    return kind == ControlKind::popup;
}

/// Explains the letter of an angle in the label; empty for other labels.
std::string_view letter_help(const Setting& setting) noexcept
{
    if (setting.field.starts_with("h_"))
        return "H: heading, the turn about the up axis (Y).\n";
    if (setting.field.starts_with("p_"))
        return "P: pitch, the tilt forwards and backwards (about X).\n";
    if (setting.field.starts_with("b_"))
        return "B: bank, the tilt sideways (about Z).\n";
    return {};
}

/// The default, with an explanation of its unrounded digits.
std::string default_help(const Setting& setting)
{
    if (setting.unit != Unit::angle || !setting.default_text.ends_with("rad"))
        return fmt::format("Default: {}", setting.default_text);
    constexpr double short_pi = 3.1415; // what the command's own defaults are made with
    const double radians = std::get<double>(parse_value(setting, setting.default_text));
    return fmt::format("Default: {:.4f} degrees, which is {:.0f} with pi taken as {}",
                       radians * 180.0 / std::numbers::pi, std::round(radians * 180.0 / short_pi),
                       short_pi);
}

} // namespace

const Setting* setting_of(const modeler::Control& control) noexcept
{
    for (const Setting& setting : all_settings())
        if (setting.label == control.label && fits(setting.unit, control.kind))
            return &setting;
    return nullptr;
}

std::optional<modeler::ControlValue> default_of(const Setting& setting,
                                                const modeler::Control& control)
{
    const Value value = parse_value(setting, setting.default_text);
    if (const auto* const whole = std::get_if<std::int32_t>(&value))
        return static_cast<int>(*whole);
    if (const auto* const number = std::get_if<double>(&value))
        return *number;
    const auto& choices = control.choices;
    const auto found = std::find(choices.begin(), choices.end(), std::get<std::string>(value));
    if (found == choices.end())
        return std::nullopt;
    return static_cast<int>(found - choices.begin());
}

std::string control_help(const Setting& setting)
{
    std::string meaning(setting.meaning);
    if (!meaning.empty())
        meaning.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(meaning[0])));
    return fmt::format("{}.\n{}{}\nOn the command line: {}", meaning, letter_help(setting),
                       default_help(setting), option_name(setting));
}

} // namespace settings
