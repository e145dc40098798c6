// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace modeler {

/// Identifies a control, a group or a tab set within one panel.
using ControlId = std::uintptr_t;

enum class ControlKind {
    integer, ///< int
    real,    ///< double
    percent, ///< fraction, displayed in percent
    angle,   ///< radians, displayed in degrees
    boolean, ///< check box: 0 off, 1 on
    popup,   ///< index into `Control::choices`
    button   ///< no value; runs `Control::action`
};

/// A control's value, unrounded: int for integer, boolean and popup; double for real, percent and
/// angle; empty for a button.
using ControlValue = std::variant<std::monostate, int, double>;

struct Control {
    ControlId id = 0;
    std::string label;
    ControlKind kind = ControlKind::integer;
    ControlValue value;
    std::vector<std::string> choices; ///< of a popup
    bool divider_after = false;       ///< a separator line follows the control
    std::function<void()> action;     ///< of a button; may be empty
};

/// A titled group of controls, in display order.
struct ControlGroup {
    ControlId id = 0;
    std::string title;
    std::vector<ControlId> members;
};

/// Tabs, one per group; the first one is initially active.
struct TabSet {
    ControlId id = 0;
    std::string title; ///< usually empty
    std::vector<ControlId> groups;
};

/// The members are enabled only while the value of the controller is not 0.
struct EnableRule {
    ControlId controller = 0;
    std::vector<ControlId> members;
    std::string message; ///< shown when the user clicks a disabled member
};

/// The contents of a panel as plain data, built from the module's description.
struct Form {
    std::string title;
    std::vector<Control> controls; ///< in the order of the module's description
    std::vector<ControlGroup> groups;
    std::vector<TabSet> tab_sets;
    std::vector<EnableRule> rules;
};

} // namespace modeler
