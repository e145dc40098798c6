// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <deque>
#include <memory>

#include "hostapi/monitor.h"
#include "modeler/front_end.h"

namespace modeler {

/// One progress display of a command.
struct Monitor {
    enum class State { made, running, finished };

    std::unique_ptr<Progress> progress; ///< null after release
    State state = State::made;
    LWMonitor table{}; ///< `data` is the monitor's number, from 1, cast to a pointer
};

/// The progress displays that a command created. Records of released ones stay until the activation
/// ends, so that stale handles are detected.
class Monitors {
public:
    /// Adds a display and returns the module's handle to it.
    [[nodiscard]] LWMonitor* add(std::unique_ptr<Progress> progress);
    /// The display of a handle's `data`; null if it does not exist or was released.
    [[nodiscard]] Monitor* find(void* data) noexcept;
    /// Releases a display.
    void release(const LWMonitor* handle) noexcept;

private:
    std::deque<Monitor> monitors_; // a deque does not move its elements
};

} // namespace modeler
