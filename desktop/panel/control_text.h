// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "modeler/form.h"

namespace desktop {

/// Whether a control of this kind is a field in which a number is typed.
[[nodiscard]] bool is_number(modeler::ControlKind kind) noexcept;

/// The sign that stands behind the field: `%`, the degree sign (UTF-8), or nothing.
[[nodiscard]] std::string_view unit_sign(modeler::ControlKind kind) noexcept;

/// A number control's value as a person reads it, in percent and degrees, to four decimals where
/// these tell it and to six digits where they would not. May be shorter than what the value holds.
[[nodiscard]] std::string shown_text(modeler::ControlKind kind, const modeler::ControlValue& value);

/// The value of what a person typed: a number or a calculation, with or without its unit.
/// @throws settings::ValueError with a sentence for that person
[[nodiscard]] modeler::ControlValue typed_value(modeler::ControlKind kind, std::string_view text);

/// Whether a text is a single number without a unit, and can stay as it was typed.
[[nodiscard]] bool is_plain_number(std::string_view text) noexcept;

/// The value so many steps up, or down where that is negative: whole numbers, percents and degrees
/// by one, others by a hundredth, from the next multiple of a step where it is on none.
[[nodiscard]] modeler::ControlValue stepped_value(modeler::ControlKind kind,
                                                  const modeler::ControlValue& value, int steps);

} // namespace desktop
