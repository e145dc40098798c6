// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modeler/form.h"

namespace modeler {

/// A form as a user meets it: what it shows, and what can be done with it. A front end draws it, or
/// fills it without drawing; it knows nothing of either. References to controls stay valid as long
/// as the panel; values may change whenever a button is pressed.
class FormPanel {
public:
    /// `form` is read and its values are written as long as the panel lives.
    explicit FormPanel(Form& form) : form_(form) {}
    FormPanel(const FormPanel&) = delete;
    FormPanel& operator=(const FormPanel&) = delete;
    ~FormPanel() = default;

    /// Everything there is to draw: title, controls, groups, tabs, rules.
    [[nodiscard]] const Form& form() const noexcept { return form_; }

    /// The control of this id, or null.
    [[nodiscard]] const Control* find(ControlId id) const noexcept;
    /// The first control with exactly this label, or null.
    [[nodiscard]] const Control* find(std::string_view label) const noexcept;
    /// The group of this id, or null.
    [[nodiscard]] const ControlGroup* find_group(ControlId id) const noexcept;

    /// Controls that stand in no group, in the module's order.
    [[nodiscard]] std::vector<ControlId> outside_groups() const;
    /// Groups that stand in no tab set, in the module's order.
    [[nodiscard]] std::vector<ControlId> outside_tabs() const;

    /// True when no rule keeps the user from the control.
    [[nodiscard]] bool enabled(ControlId id) const;
    /// What the user is told on trying a disabled control: the message of the first rule that
    /// disables it. Empty for a control that is enabled.
    [[nodiscard]] std::string_view disabled_message(ControlId id) const;

    /// Sets a control's value as a user does.
    /// @throws PanelRefusal with the rule's message when the control is disabled, and as `fill`.
    void set(ControlId id, ControlValue value);

    /// Sets a control's value whether it is enabled or not, for a front end that fills the whole
    /// form at once. An int is taken for a control that holds a double.
    /// @throws PanelRefusal when there is no such control, when the value is not of its kind, when
    /// a switch is given anything but 0 and 1, or a popup an index without an entry. The old value
    /// then stays.
    void fill(ControlId id, ControlValue value);

    /// Presses a button as a user does; the module may change other values, or show messages.
    /// @throws PanelRefusal when there is no such button or when it is disabled.
    void press(ControlId id);

private:
    [[nodiscard]] Control* find_mutable(ControlId id) noexcept;
    [[nodiscard]] const EnableRule* disabling_rule(ControlId id) const;

    Form& form_;
};

} // namespace modeler
