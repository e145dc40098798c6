// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <stdexcept>

#include "hostapi/panel.h"
#include "modeler/form.h"

namespace modeler {

/// A module's description of a panel is invalid. `what` names the table row and the problem.
class BadDescription : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Creates a button's action from the module's callback for it.
using BindButton = std::function<std::function<void()>(LWXPanelButtonFunc*, const Control& button)>;

/// Reads a module's table of controls. All values are initially 0.
/// @throws BadDescription for a row without label or class, an unknown class, or a duplicate id.
[[nodiscard]] Form read_controls(const LWXPanelControl* controls);

/// Checks a module's table of data types against the controls.
/// @throws BadDescription for an id without a control, or a type that its control does not have.
void check_types(const Form& form, const LWXPanelDataDesc* data);

/// Applies a list of layout hints to the form. A label may precede the element it names.
/// @throws BadDescription for a hint of an unknown kind, one that refers to a missing element,
/// lacks its text, members, list or callback, or puts a control into a second group.
void apply_hints(Form& form, const LWXPanelHint* hints, const BindButton& bind);

/// Checks the complete form. @throws BadDescription for a popup without a list.
void check_complete(const Form& form);

} // namespace modeler
