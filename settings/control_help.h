// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "modeler/form.h"
#include "settings/table.h"

namespace settings {

/// The setting of a panel's control, found by the control's label. Null if there is no such setting
/// or the control has another type.
[[nodiscard]] const Setting* setting_of(const modeler::Control& control) noexcept;

/// The default of the setting as a value of the control. Empty if the control cannot hold it, for
/// example a popup without that entry.
[[nodiscard]] std::optional<modeler::ControlValue> default_of(const Setting& setting,
                                                              const modeler::Control& control);

/// Help text for a setting: meaning, label, default, and command line option. Plain text with line
/// breaks.
[[nodiscard]] std::string control_help(const Setting& setting);

} // namespace settings
