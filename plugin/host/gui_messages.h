// SPDX-License-Identifier: MIT
/// The module's message boxes. Without the host's message service nothing is shown.
#pragma once

#include "hostapi/panel.h"

namespace dastrel {

/// An error box of one line, or of two.
void message(const char* line1, const char* line2);

/// The "About" button: who made it and where it lives.
void msg_about(LWXPanelID panel, LWXPanelControlID control);

void msg_nurbs(LWXPanelID panel, LWXPanelControlID control);
void msg_nurbs2(LWXPanelID panel, LWXPanelControlID control);

/// Asks "Are You sure?" under the title `b`, with `a` as the second line. Returns the host's
/// answer; 0 without the service.
int are_you_sure(const char* a, const char* b);

} // namespace dastrel
