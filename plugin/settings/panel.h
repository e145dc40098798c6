// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/panel.h"

namespace dastrel {

class params_typ;

/// Builds the options panel, fills it from the global settings and shows it.
/// `weight_map_names`: what the three map popups offer, "none" first, ended by null; it must
/// outlive the panel. Returns non-zero when the user closed it with OK: the panel still exists, to
/// be read, and the caller destroys it. Returns 0 for Cancel, or when there can be no panel.
int display_panel(params_typ* record, char** weight_map_names);

/// The "Reset Values" button: fills the panel with the defaults. The settings themselves change
/// only when the user then presses OK.
void defaults(LWXPanelID panel, LWXPanelControlID control);

/// The "Zero Angles" button: sets the six limits of the random rotation to 0 in the panel.
void zero_angles(LWXPanelID panel, LWXPanelControlID control);

} // namespace dastrel
