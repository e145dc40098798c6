// SPDX-License-Identifier: MIT
#include "settings/form_filling.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <variant>

#include <fmt/format.h>

#include "modeler/errors.h"
#include "settings/errors.h"

namespace settings {

namespace {

std::string list_of(const std::vector<std::string>& names)
{
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "'" : ", '") + name + "'";
    return list;
}

/// Whether the type of the control matches the setting.
bool fits(const modeler::Control& control, const Setting& setting)
{
    switch (setting.unit) {
    case Unit::map:
        return control.kind == modeler::ControlKind::popup;
    case Unit::count:
        return control.kind == modeler::ControlKind::integer;
    case Unit::on_off:
        return control.kind == modeler::ControlKind::boolean ||
               control.kind == modeler::ControlKind::integer;
    case Unit::percent:
    case Unit::fraction:
    case Unit::angle:
        break;
    }
    return std::holds_alternative<double>(control.value);
}

std::string_view kind_name(modeler::ControlKind kind)
{
    switch (kind) {
    case modeler::ControlKind::integer:
        return "a whole number";
    case modeler::ControlKind::real:
        return "a number";
    case modeler::ControlKind::percent:
        return "a percentage";
    case modeler::ControlKind::angle:
        return "an angle";
    case modeler::ControlKind::boolean:
        return "a switch";
    case modeler::ControlKind::popup:
        return "a list";
    case modeler::ControlKind::button:
        break;
    }
    return "a button";
}

void check_control(const modeler::Control& control, const Setting& setting)
{
    if (!fits(control, setting))
        throw PanelMismatch(fmt::format(
            "the module's panel has '{}' as {}, which is no control for the setting {} ({}); this "
            "module is not the one the program was made for",
            control.label, kind_name(control.kind), setting.field, unit_name(setting.unit)));
}

int choice_index(const modeler::Control& control, const std::string& name,
                 const std::string& source)
{
    const auto found = std::find(control.choices.begin(), control.choices.end(), name);
    if (found != control.choices.end())
        return static_cast<int>(found - control.choices.begin());
    // The first entry means no map.
    const std::vector<std::string> maps(control.choices.begin() + (control.choices.empty() ? 0 : 1),
                                        control.choices.end());
    if (maps.empty())
        throw WrongSettings(fmt::format(
            "{}: there is no weight map '{}'; neither ground nor model has any", source, name));
    throw WrongSettings(
        fmt::format("{}: there is no weight map '{}'; there are {}", source, name, list_of(maps)));
}

modeler::ControlValue control_value(const modeler::Control& control, const GivenSetting& given)
{
    if (const auto* name = std::get_if<std::string>(&given.value))
        return choice_index(control, *name, given.source);
    if (const auto* whole = std::get_if<std::int32_t>(&given.value))
        return static_cast<int>(*whole);
    return std::get<double>(given.value);
}

} // namespace

std::vector<std::string> fill_form(modeler::FormPanel& panel, std::span<const GivenSetting> given)
{
    std::vector<std::pair<const GivenSetting*, modeler::ControlId>> changed;
    for (const GivenSetting& one : given) {
        const modeler::Control* const control = panel.find(one.setting->label);
        if (control == nullptr)
            throw PanelMismatch(
                fmt::format("{}: the module's panel has no control '{}'; this module is "
                            "not the one the program was made for",
                            one.source, one.setting->label));
        check_control(*control, *one.setting);
        const modeler::ControlValue before = control->value;
        try {
            panel.fill(control->id, control_value(*control, one));
        } catch (const modeler::PanelRefusal& refusal) {
            throw PanelMismatch(fmt::format("{}: the module's panel does not take it: {}",
                                            one.source, refusal.what()));
        }
        if (control->value != before)
            changed.emplace_back(&one, control->id);
    }
    std::vector<std::string> warnings;
    for (const auto& [one, id] : changed) {
        if (!panel.enabled(id))
            warnings.push_back(fmt::format("{}: is set while its control is disabled: {}",
                                           one->source, panel.disabled_message(id)));
    }
    return warnings;
}

void check_form(const modeler::FormPanel& panel)
{
    for (const Setting& setting : all_settings())
        if (const modeler::Control* const control = panel.find(setting.label))
            check_control(*control, setting);
}

std::vector<UsedSetting> read_form(const modeler::FormPanel& panel)
{
    std::vector<UsedSetting> used;
    for (const Setting& setting : all_settings()) {
        const modeler::Control* const control = panel.find(setting.label);
        if (control == nullptr || !fits(*control, setting))
            continue;
        if (const int* const whole = std::get_if<int>(&control->value)) {
            const auto index = static_cast<std::size_t>(*whole);
            if (setting.unit != Unit::map)
                used.push_back({&setting, static_cast<std::int32_t>(*whole)});
            else if (*whole >= 0 && index < control->choices.size())
                used.push_back({&setting, control->choices[index]});
        } else if (const double* const number = std::get_if<double>(&control->value)) {
            used.push_back({&setting, *number});
        }
    }
    return used;
}

} // namespace settings
