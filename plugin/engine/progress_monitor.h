// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/monitor.h"

namespace dastrel {

/// Shows the progress of a loop during its lifetime; does nothing if the host has no monitors. A
/// stop request of the user is ignored: a run always completes, and the edit can be undone.
class progress_monitor {
public:
    /// Shows the title over the caption of both loops of a run.
    progress_monitor(const char* title, int total);
    progress_monitor(const progress_monitor&) = delete;
    progress_monitor& operator=(const progress_monitor&) = delete;
    ~progress_monitor();

    void step();

private:
    LWMonitor* monitor;
};

} // namespace dastrel
