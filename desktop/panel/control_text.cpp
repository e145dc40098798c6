// SPDX-License-Identifier: MIT
#include "desktop/panel/control_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>
#include <utility>

#include <fmt/format.h>

#include "desktop/panel/arithmetic.h"
#include "settings/values.h"

namespace desktop {

namespace {

using modeler::ControlKind;

constexpr std::string_view degree_sign = "\u00B0";

settings::Unit unit_of(ControlKind kind) noexcept
{
    switch (kind) {
    case ControlKind::percent:
        return settings::Unit::percent;
    case ControlKind::angle:
        return settings::Unit::angle;
    case ControlKind::real:
        return settings::Unit::fraction;
    default:
        return settings::Unit::count;
    }
}

/// Formats with four decimals without trailing zeros or, if that loses all significant digits, with
/// six significant digits.
std::string shortened(double number)
{
    const double size = std::fabs(number);
    if (number != 0.0 && !(size >= 0.01 && size < 1e9))
        return fmt::format("{:.6g}", number);
    std::string text = fmt::format("{:.4f}", number);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
    return text == "-0" ? "0" : text;
}

/// Converts a control's number to percent or degrees for display.
double shown_number(ControlKind kind, double number)
{
    if (kind == ControlKind::percent)
        return number * 100.0;
    return kind == ControlKind::angle ? number * 180.0 / std::numbers::pi : number;
}

/// Alternative Unicode signs and their ASCII equivalents.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> other_signs{
    {{degree_sign, "deg"}, {"\u00D7", "*"}, {"\u00F7", "/"}, {"\u2212", "-"}}};

std::string with_plain_signs(std::string_view text)
{
    std::string plain(text);
    for (const auto& [sign, reading] : other_signs)
        for (auto at = plain.find(sign); at != std::string::npos; at = plain.find(sign, at))
            plain.replace(at, sign.size(), reading);
    return plain;
}

/// Formats the result of an expression as a single number with unit.
std::string calculated(std::string_view text)
{
    text = text.substr(0, text.find_last_not_of(" \t") + 1);
    for (const std::string_view unit : {"%", "deg", "rad"})
        if (text.ends_with(unit))
            return fmt::format("{}{}", calculate(text.substr(0, text.size() - unit.size())), unit);
    return fmt::format("{}", calculate(text));
}

int calculated_whole(std::string_view text)
{
    const double result = calculate(text);
    const double nearest = std::round(result);
    // Round binary rounding errors, as in 0.1*30, to an integer.
    if (std::fabs(result - nearest) > 1e-9 * std::max(1.0, std::fabs(nearest)))
        throw settings::ValueError(
            fmt::format("'{}' is {}, which is not a whole number; write one such as {:.0f}", text,
                        shortened(result), nearest));
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<int>(
        settings::parse_whole_number(fmt::format("{:.0f}", nearest), Limits::min(), Limits::max()));
}

} // namespace

bool is_number(ControlKind kind) noexcept
{
    return kind == ControlKind::integer || kind == ControlKind::real ||
           kind == ControlKind::percent || kind == ControlKind::angle;
}

std::string_view unit_sign(ControlKind kind) noexcept
{
    if (kind == ControlKind::percent)
        return "%";
    return kind == ControlKind::angle ? degree_sign : std::string_view();
}

std::string shown_text(ControlKind kind, const modeler::ControlValue& value)
{
    if (const int* const whole = std::get_if<int>(&value))
        return fmt::format("{}", *whole);
    const double* const number = std::get_if<double>(&value);
    if (number == nullptr)
        return {};
    return shortened(shown_number(kind, *number));
}

modeler::ControlValue typed_value(ControlKind kind, std::string_view text)
{
    std::string plain = with_plain_signs(text);
    if (is_calculation(plain)) {
        if (kind == ControlKind::integer)
            return calculated_whole(plain);
        plain = calculated(plain);
    }
    const settings::Setting typed{{}, {}, unit_of(kind), {}, {}, {}};
    const settings::Value value = settings::parse_value(typed, std::string_view(plain));
    if (const auto* const whole = std::get_if<std::int32_t>(&value))
        return static_cast<int>(*whole);
    return std::get<double>(value);
}

bool is_plain_number(std::string_view text) noexcept
{
    return text.find_first_not_of("0123456789.eE+- ") == std::string_view::npos &&
           !is_calculation(text);
}

modeler::ControlValue stepped_value(ControlKind kind, const modeler::ControlValue& value, int steps)
{
    using Limits = std::numeric_limits<int>;
    if (const int* const whole = std::get_if<int>(&value))
        return static_cast<int>(std::clamp(std::int64_t{*whole} + steps,
                                           std::int64_t{Limits::min()},
                                           std::int64_t{Limits::max()}));
    const double* const number = std::get_if<double>(&value);
    if (number == nullptr)
        return value;
    const double per_unit = kind == ControlKind::real ? 100.0 : 1.0;
    const double place = shown_number(kind, *number) * per_unit;
    const double nearest = std::round(place);
    const bool on_step = std::fabs(place - nearest) < 1e-6;
    const double from = on_step ? nearest : steps > 0 ? std::floor(place) : std::ceil(place);
    // Via the text, so that the result equals that of typing the number.
    return typed_value(kind, fmt::format("{}", (from + steps) / per_unit));
}

} // namespace desktop
