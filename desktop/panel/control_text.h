// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "modeler/form.h"

namespace desktop {

/// Whether a control of this kind is a number field.
[[nodiscard]] bool is_number(modeler::ControlKind kind) noexcept;

/// The unit sign: `%`, the degree sign (UTF-8), or empty.
[[nodiscard]] std::string_view unit_sign(modeler::ControlKind kind) noexcept;

/// Formats the value of a number control for display, in percent or degrees: four decimals, or six
/// significant digits where four decimals do not suffice. May be rounded.
[[nodiscard]] std::string shown_text(modeler::ControlKind kind, const modeler::ControlValue& value);

/// Parses user input: a number or an expression, with or without unit.
/// @throws settings::ValueError with a message for the user
[[nodiscard]] modeler::ControlValue typed_value(modeler::ControlKind kind, std::string_view text);

/// Whether a text is a single number without unit, which can be displayed as typed.
[[nodiscard]] bool is_plain_number(std::string_view text) noexcept;

/// The value changed by a number of steps (negative: down). A step is 1 for integers, percent and
/// degrees, else 0.01. A value between multiples of the step moves to the next multiple first.
[[nodiscard]] modeler::ControlValue stepped_value(modeler::ControlKind kind,
                                                  const modeler::ControlValue& value, int steps);

} // namespace desktop
