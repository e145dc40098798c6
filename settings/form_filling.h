// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <utility>
#include <vector>

#include "modeler/form_panel.h"
#include "settings/given.h"

namespace settings {

/// Sets the controls of the given settings, found by their labels, and leaves all others alone.
/// All are filled, in whatever order they were given and whether they are enabled or not.
/// @return a sentence for each setting that was changed in a control which is disabled afterwards.
/// @throws WrongSettings for a map that the popup does not list; PanelMismatch when the panel has
/// no fitting control.
std::vector<std::string> fill_form(modeler::FormPanel& panel, std::span<const GivenSetting> given);

/// Checks that every control named like a setting takes the setting's values.
/// @throws PanelMismatch naming the first that does not
void check_form(const modeler::FormPanel& panel);

/// The values of all settings that the panel has a fitting control for, in the order of the table.
[[nodiscard]] std::vector<UsedSetting> read_form(const modeler::FormPanel& panel);

} // namespace settings
