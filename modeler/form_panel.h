// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "modeler/form.h"

namespace modeler {

/// The model of a form panel: queries for drawing it, and the actions of a user. Independent of any
/// user interface; a front end draws the panel or fills it in without drawing. References to
/// controls stay valid as long as the panel; pressing a button may change any value.
class FormPanel {
public:
    /// `form` must outlive the panel, which changes its values.
    explicit FormPanel(Form& form) : form_(form) {}
    FormPanel(const FormPanel&) = delete;
    FormPanel& operator=(const FormPanel&) = delete;
    ~FormPanel() = default;

    /// The whole content: title, controls, groups, tabs, rules.
    [[nodiscard]] const Form& form() const noexcept { return form_; }

    /// The control of this id, or null.
    [[nodiscard]] const Control* find(ControlId id) const noexcept;
    /// The first control with exactly this label, or null.
    [[nodiscard]] const Control* find(std::string_view label) const noexcept;
    /// The group of this id, or null.
    [[nodiscard]] const ControlGroup* find_group(ControlId id) const noexcept;

    /// Controls that are in no group, in the order of the form.
    [[nodiscard]] std::vector<ControlId> outside_groups() const;
    /// Groups that are in no tab set, in the order of the form.
    [[nodiscard]] std::vector<ControlId> outside_tabs() const;

    /// Whether no rule disables the control.
    [[nodiscard]] bool enabled(ControlId id) const;
    /// The message of the first rule that disables the control; empty if it is enabled.
    [[nodiscard]] std::string_view disabled_message(ControlId id) const;

    /// Sets a control's value on behalf of the user.
    /// @throws PanelRefusal with the rule's message if the control is disabled, and as `fill`.
    void set(ControlId id, ControlValue value);

    /// Sets a control's value even if it is disabled, for a front end that fills in the whole form
    /// at once. An int is converted for a control that holds a double.
    /// @throws PanelRefusal if there is no such control, the value has the wrong type, a check box
    /// gets a value other than 0 and 1, or a popup an index out of range. The old value then stays.
    void fill(ControlId id, ControlValue value);

    /// Presses a button on behalf of the user; the module may change values or show messages.
    /// @throws PanelRefusal if there is no such button or it is disabled.
    void press(ControlId id);

private:
    [[nodiscard]] Control* find_mutable(ControlId id) noexcept;
    [[nodiscard]] const EnableRule* disabling_rule(ControlId id) const;

    Form& form_;
};

} // namespace modeler
