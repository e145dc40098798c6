// SPDX-License-Identifier: MIT
#include "plugin/engine/progress_monitor.h"

#include "plugin/host/run_state.h"

namespace dastrel {

progress_monitor::progress_monitor(const char* title, int total)
    : monitor(monf != nullptr ? monf->create(title, "Randomising positions...") : nullptr)
{
    if (monitor != nullptr)
        monitor->init(monitor->data, total);
}

progress_monitor::~progress_monitor()
{
    if (monitor == nullptr)
        return;
    monitor->done(monitor->data);
    monf->destroy(monitor);
}

void progress_monitor::step()
{
    if (monitor != nullptr)
        monitor->step(monitor->data, 1);
}

} // namespace dastrel
