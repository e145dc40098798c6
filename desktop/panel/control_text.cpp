// SPDX-License-Identifier: MIT
#include "desktop/panel/control_text.h"

#include <cmath>
#include <numbers>

#include <fmt/format.h>

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

/// Four decimals without the zeros at their end, where that keeps at least some digits of the
/// number; else six digits.
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
    if (kind == ControlKind::percent)
        return shortened(*number * 100.0);
    if (kind == ControlKind::angle)
        return shortened(*number * 180.0 / std::numbers::pi);
    return shortened(*number);
}

modeler::ControlValue typed_value(ControlKind kind, std::string_view text)
{
    std::string plain(text);
    if (const auto at = plain.find(degree_sign); at != std::string::npos)
        plain.replace(at, degree_sign.size(), "deg");
    const settings::Setting typed{{}, {}, unit_of(kind), {}, {}, {}};
    const settings::Value value = settings::parse_value(typed, std::string_view(plain));
    if (const auto* const whole = std::get_if<std::int32_t>(&value))
        return static_cast<int>(*whole);
    return std::get<double>(value);
}

} // namespace desktop
