// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <stdexcept>

#include "hostapi/panel.h"
#include "modeler/form.h"

namespace modeler {

/// A panel that a module describes wrongly. `what` names the table row and what is wrong with it.
class BadDescription : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Makes a button's action out of the module's function for it.
using BindButton = std::function<std::function<void()>(LWXPanelButtonFunc*, const Control& button)>;

/// Reads a module's table of controls. All values are 0.
/// @throws BadDescription for a row without label or class, a class this host does not know, or an
/// id that is there twice.
[[nodiscard]] Form read_controls(const LWXPanelControl* controls);

/// Checks a module's table of data types against the controls.
/// @throws BadDescription for an id without a control, or a type that its control does not have.
void check_types(const Form& form, const LWXPanelDataDesc* data);

/// Adds what a list of hints says to the form. A label may come before what it names.
/// @throws BadDescription for a hint of an unknown kind, one that names what is not there, lacks
/// its text, members, list or function, or gives a control a second group.
void apply_hints(Form& form, const LWXPanelHint* hints, const BindButton& bind);

/// Checks what only shows when all was told.
/// @throws BadDescription for a popup without a list.
void check_complete(const Form& form);

} // namespace modeler
