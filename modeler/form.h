// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace modeler {

/// Names a control, a group or a tab set within one panel.
using ControlId = std::uintptr_t;

enum class ControlKind {
    integer, ///< a whole number
    real,    ///< a number
    percent, ///< a fraction, shown times 100
    angle,   ///< radians, shown in degrees
    boolean, ///< a switch: 0 off, 1 on
    popup,   ///< one of `Control::choices`, as its index
    button   ///< has no value; does something when pressed
};

/// A control's value, exactly as the module or the user gave it: an int for integer, boolean and
/// popup; a double for real, percent and angle; nothing for a button.
using ControlValue = std::variant<std::monostate, int, double>;

struct Control {
    ControlId id = 0;
    std::string label;
    ControlKind kind = ControlKind::integer;
    ControlValue value;
    std::vector<std::string> choices; ///< of a popup
    bool divider_after = false;       ///< a line stands after this control
    std::function<void()> action;     ///< of a button; may be empty
};

/// Controls that belong together, in the order in which they are shown.
struct ControlGroup {
    ControlId id = 0;
    std::string title;
    std::vector<ControlId> members;
};

/// Groups that are shown one at a time, the first one at first.
struct TabSet {
    ControlId id = 0;
    std::string title; ///< mostly empty
    std::vector<ControlId> groups;
};

/// The members are usable only while the value of the controller is not 0.
struct EnableRule {
    ControlId controller = 0;
    std::vector<ControlId> members;
    std::string message; ///< shown when the user tries a member otherwise
};

/// What a panel consists of: plain data, filled from a module's description.
struct Form {
    std::string title;
    std::vector<Control> controls; ///< in the module's order
    std::vector<ControlGroup> groups;
    std::vector<TabSet> tab_sets;
    std::vector<EnableRule> rules;
};

} // namespace modeler
