// SPDX-License-Identifier: MIT
#include "modeler/form_panel.h"

#include <algorithm>

#include <fmt/format.h>

#include "modeler/errors.h"

namespace modeler {

namespace {

bool is_zero(const ControlValue& value) noexcept
{
    if (const int* number = std::get_if<int>(&value))
        return *number == 0;
    if (const double* number = std::get_if<double>(&value))
        return *number == 0.0;
    return true;
}

bool holds_double(ControlKind kind) noexcept
{
    return kind == ControlKind::real || kind == ControlKind::percent || kind == ControlKind::angle;
}

PanelRefusal no_control(ControlId id)
{
    return PanelRefusal(fmt::format("the panel has no control {:#x}", id));
}

/// Converts the value to the type of the control. @throws PanelRefusal if it does not fit
ControlValue fitted(const Control& control, ControlValue value)
{
    if (control.kind == ControlKind::button)
        throw PanelRefusal(fmt::format("'{}' is a button and has no value", control.label));
    if (holds_double(control.kind)) {
        if (const int* number = std::get_if<int>(&value))
            return static_cast<double>(*number);
        if (std::holds_alternative<double>(value))
            return value;
        throw PanelRefusal(fmt::format("'{}' takes a number", control.label));
    }
    const int* const number = std::get_if<int>(&value);
    if (number == nullptr)
        throw PanelRefusal(fmt::format("'{}' takes a whole number", control.label));
    if (control.kind == ControlKind::boolean && *number != 0 && *number != 1)
        throw PanelRefusal(
            fmt::format("'{}' is a switch: 0 is off and 1 is on, not {}", control.label, *number));
    if (control.kind == ControlKind::popup &&
        (*number < 0 || static_cast<std::size_t>(*number) >= control.choices.size()))
        throw PanelRefusal(fmt::format("'{}' has {} entries, counted from 0; there is no entry {}",
                                       control.label, control.choices.size(), *number));
    return value;
}

template <typename Range> bool contains(const Range& ids, ControlId id)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

} // namespace

const Control* FormPanel::find(ControlId id) const noexcept
{
    for (const Control& control : form_.controls)
        if (control.id == id)
            return &control;
    return nullptr;
}

Control* FormPanel::find_mutable(ControlId id) noexcept
{
    for (Control& control : form_.controls)
        if (control.id == id)
            return &control;
    return nullptr;
}

const Control* FormPanel::find(std::string_view label) const noexcept
{
    for (const Control& control : form_.controls)
        if (control.label == label)
            return &control;
    return nullptr;
}

const ControlGroup* FormPanel::find_group(ControlId id) const noexcept
{
    for (const ControlGroup& group : form_.groups)
        if (group.id == id)
            return &group;
    return nullptr;
}

std::vector<ControlId> FormPanel::outside_groups() const
{
    std::vector<ControlId> ids;
    for (const Control& control : form_.controls)
        if (std::none_of(form_.groups.begin(), form_.groups.end(), [&](const ControlGroup& group) {
                return contains(group.members, control.id);
            }))
            ids.push_back(control.id);
    return ids;
}

std::vector<ControlId> FormPanel::outside_tabs() const
{
    std::vector<ControlId> ids;
    for (const ControlGroup& group : form_.groups)
        if (std::none_of(form_.tab_sets.begin(), form_.tab_sets.end(),
                         [&](const TabSet& tabs) { return contains(tabs.groups, group.id); }))
            ids.push_back(group.id);
    return ids;
}

const EnableRule* FormPanel::disabling_rule(ControlId id) const
{
    for (const EnableRule& rule : form_.rules) {
        if (!contains(rule.members, id))
            continue;
        const Control* const controller = find(rule.controller);
        if (controller == nullptr || is_zero(controller->value))
            return &rule;
    }
    return nullptr;
}

bool FormPanel::enabled(ControlId id) const { return disabling_rule(id) == nullptr; }

std::string_view FormPanel::disabled_message(ControlId id) const
{
    const EnableRule* const rule = disabling_rule(id);
    return rule != nullptr ? std::string_view(rule->message) : std::string_view();
}

void FormPanel::set(ControlId id, ControlValue value)
{
    if (const EnableRule* const rule = disabling_rule(id))
        throw PanelRefusal(rule->message);
    fill(id, value);
}

void FormPanel::fill(ControlId id, ControlValue value)
{
    Control* const control = find_mutable(id);
    if (control == nullptr)
        throw no_control(id);
    control->value = fitted(*control, value);
}

void FormPanel::press(ControlId id)
{
    const Control* const control = find(id);
    if (control == nullptr)
        throw no_control(id);
    if (control->kind != ControlKind::button)
        throw PanelRefusal(fmt::format("'{}' is not a button", control->label));
    if (const EnableRule* const rule = disabling_rule(id))
        throw PanelRefusal(rule->message);
    if (control->action)
        control->action();
}

} // namespace modeler
