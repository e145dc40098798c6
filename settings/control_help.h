// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "modeler/form.h"
#include "settings/table.h"

namespace settings {

/// The setting that a control of a panel stands for, found by the control's label. Null for a
/// control that is no setting of the command: of another module, or of another kind.
[[nodiscard]] const Setting* setting_of(const modeler::Control& control) noexcept;

/// The setting's default as the control's value. None where the control cannot hold it, as a popup
/// without the entry.
[[nodiscard]] std::optional<modeler::ControlValue> default_of(const Setting& setting,
                                                              const modeler::Control& control);

/// What a person wants to know of a setting: its meaning, the words of its label, its default, its
/// option. Plain text in lines.
[[nodiscard]] std::string control_help(const Setting& setting);

} // namespace settings
