// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <optional>

#include "hostapi/panel.h"
#include "modeler/form.h"

namespace modeler {

/// One panel of a command.
struct Panel {
    std::optional<Form> form; ///< none once it was released
    bool faulty = false;      ///< it was described wrongly and will not be shown
    bool shown = false;       ///< it is on the screen now
    bool release = false;     ///< to be released when it leaves the screen
};

/// The panels that a command made. Their records stay until the activation ends, so that a handle
/// of a released one is recognised.
class Panels {
public:
    /// Takes a form and gives the module's handle to it: a number in pointer clothing.
    [[nodiscard]] LWXPanelID add(Form form);
    /// The panel of a handle, if it is there and not released; else null.
    [[nodiscard]] Panel* find(LWXPanelID handle) noexcept;

private:
    std::deque<Panel> panels_; // its elements do not move
};

} // namespace modeler
