// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "modeler/form_panel.h"
#include "settings/given.h"

namespace settings {

/// Sets the controls of the given settings, found by label, even if they are disabled. Leaves all
/// other controls unchanged.
/// @return a warning for each changed setting whose control is disabled afterwards
/// @throws WrongSettings for a map that the popup does not list; PanelMismatch if the panel has no
/// matching control
std::vector<std::string> fill_form(modeler::FormPanel& panel, std::span<const GivenSetting> given);

/// Checks that every control with the label of a setting accepts values of the setting.
/// @throws PanelMismatch for the first that does not
void check_form(const modeler::FormPanel& panel);

/// The values of all settings for which the panel has a matching control, in table order.
[[nodiscard]] std::vector<UsedSetting> read_form(const modeler::FormPanel& panel);

} // namespace settings
