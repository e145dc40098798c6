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

    std::unique_ptr<Progress> progress; ///< null once it was released
    State state = State::made;
    LWMonitor table{}; ///< `data` is the monitor's number, from 1, in pointer clothing
};

/// The progress displays that a command made. Their records stay until the activation ends, so that
/// a handle of a released one is recognised.
class Monitors {
public:
    /// Takes a display and gives the module's handle to it.
    [[nodiscard]] LWMonitor* add(std::unique_ptr<Progress> progress);
    /// The display that `data` stands for, if it is there and not released; else null.
    [[nodiscard]] Monitor* find(void* data) noexcept;
    /// Releases a display.
    void release(const LWMonitor* handle) noexcept;

private:
    std::deque<Monitor> monitors_; // its elements do not move
};

} // namespace modeler
