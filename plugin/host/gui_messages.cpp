// SPDX-License-Identifier: MIT
#include "plugin/host/gui_messages.h"

#include "plugin/host/run_state.h"

namespace dastrel {

void message(const char* line1, const char* line2)
{
    if (msg != nullptr)
        msg->error(line1, line2);
}

void msg_about(LWXPanelID /*panel*/, LWXPanelControlID /*control*/)
{
    if (msg != nullptr)
        msg->info("Scatters clones of a model, by the Dastrel authors, version 1.6.1",
                  "Home page: README.md of the Dastrel repository");
}

void msg_nurbs(LWXPanelID /*panel*/, LWXPanelControlID /*control*/)
{
    if (msg != nullptr)
        msg->info("Need some polys in background layer.", "NURBS not supported.");
}

void msg_nurbs2(LWXPanelID /*panel*/, LWXPanelControlID /*control*/)
{
    if (msg != nullptr)
        msg->error("NURBS not supported.", "Need some polys in foreground layer.");
}

int are_you_sure(const char* a, const char* b)
{
    return msg != nullptr ? msg->yesNo(b, "Are You sure?", a) : 0;
}

} // namespace dastrel
