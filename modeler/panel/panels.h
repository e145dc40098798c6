// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <optional>

#include "hostapi/panel.h"
#include "modeler/form.h"

namespace modeler {

/// One panel of a command.
struct Panel {
    std::optional<Form> form; ///< empty after release
    bool faulty = false;      ///< its description is invalid; it is never shown
    bool shown = false;       ///< currently on the screen
    bool release = false;     ///< release it when it is closed
};

/// The panels that a command created. Records of released ones stay until the activation ends, so
/// that stale handles are detected.
class Panels {
public:
    /// Adds a form and returns the module's handle to it: an index cast to a pointer.
    [[nodiscard]] LWXPanelID add(Form form);
    /// The panel of a handle; null if it does not exist or was released.
    [[nodiscard]] Panel* find(LWXPanelID handle) noexcept;

private:
    std::deque<Panel> panels_; // a deque does not move its elements
};

} // namespace modeler
