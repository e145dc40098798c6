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

/// The value of what a person typed, with or without its unit.
/// @throws settings::ValueError with a sentence for that person
[[nodiscard]] modeler::ControlValue typed_value(modeler::ControlKind kind, std::string_view text);

} // namespace desktop
