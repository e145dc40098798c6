// SPDX-License-Identifier: MIT
#include "tests/support/allocations.h"
#include "tests/support/recording_calls.h"

namespace support {

namespace {

// An open panel needs nothing behind its id.
LWXPanelID the_panel() { return reinterpret_cast<LWXPanelID>(std::uintptr_t{0x700}); }

void check_panel(LWXPanelID panel, const char* call, std::vector<std::string>& violations)
{
    if (panel != the_panel())
        violations.push_back(std::string(call) + ": no such panel");
}

std::string value_text(const PanelValue& value)
{
    if (const int* whole = std::get_if<int>(&value))
        return std::to_string(*whole);
    if (const double* real = std::get_if<double>(&value))
        return number(*real);
    return "nothing";
}

std::string members_text(const LWXPanelControlID* members)
{
    std::string text;
    for (; *members != 0; ++members)
        text += " " + hex(*members);
    return text;
}

std::string list_text(const char* const* list)
{
    std::string text;
    for (; *list != nullptr; ++list)
        text += " " + quoted(*list);
    return text;
}

std::string hint_text(const LWXPanelHint& hint)
{
    const std::string id = hex(hint.id);
    switch (hint.kind) {
    case XpLABEL:
        return "hint label " + id + " " + quoted(hint.text);
    case XpGROUP_:
        return "hint group " + id + members_text(hint.members);
    case XpTABS_:
        return "hint tabs " + id + members_text(hint.members);
    case XpDIVADD:
        return "hint divider " + id;
    case XpSTRLIST:
        return "hint list " + id + list_text(hint.list);
    case XpBUTNOTIFY:
        return "hint button " + id;
    case XpENABLEMSG_:
        return "hint enable " + id + members_text(hint.members) + " " + quoted(hint.text);
    case XpEND:
        break;
    }
    return "hint of no kind";
}

} // namespace

void PanelCalls::fill(LWXPanelFuncs& table)
{
    table = {create, describe, hint, formGet, formSet, post, destroy};
}

LWXPanelID PanelCalls::create(int type, const LWXPanelControl* controls)
{
    const HostSide side;
    RecordingHost& h = host();
    h.record("panel create(" + std::to_string(type) + ")");
    for (; controls->id != 0; ++controls)
        h.record("control " + hex(controls->id) + " " + quoted(controls->label) + " " +
                 controls->control_class);
    if (!h.gives_panel)
        return nullptr;
    ++h.open_panels;
    h.panel_values.clear();
    return the_panel();
}

void PanelCalls::describe(LWXPanelID panel, const LWXPanelDataDesc* data, LWXPanelGetFunc* get,
                          LWXPanelSetFunc* set)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "describe", h.violations);
    h.record(std::string("panel describe(") + (get == nullptr ? "null" : "get") + ", " +
             (set == nullptr ? "null" : "set") + ")");
    h.data_types_.clear();
    for (; data->id != 0; ++data) {
        h.record("data " + hex(data->id) + " " + quoted(data->label) + " " + data->data_type);
        h.data_types_[data->id] = data->data_type;
    }
}

void PanelCalls::hint(LWXPanelID panel, LWXPanelControlID id, const LWXPanelHint* hints)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "hint", h.violations);
    h.record("panel hint(" + std::to_string(id) + ")");
    for (; hints->kind != XpEND; ++hints) {
        h.record(hint_text(*hints));
        if (hints->kind == XpBUTNOTIFY)
            h.buttons_[hints->id] = hints->button;
        if (hints->kind != XpSTRLIST)
            continue;
        h.choices.clear();
        for (const char* const* entry = hints->list; *entry != nullptr; ++entry)
            h.choices.emplace_back(*entry);
    }
}

void* PanelCalls::formGet(LWXPanelID panel, LWXPanelControlID control)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "formGet", h.violations);
    h.record("formGet(" + hex(control) + ")");
    PanelValue& value = h.panel_values[control];
    if (int* whole = std::get_if<int>(&value))
        return whole;
    return std::get_if<double>(&value);
}

void PanelCalls::formSet(LWXPanelID panel, LWXPanelControlID control, const void* value)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "formSet", h.violations);
    PanelValue& stored = h.panel_values[control];
    const std::string& type = h.data_types_[control];
    if (type == "integer")
        stored = *static_cast<const int*>(value);
    else if (type == "float")
        stored = *static_cast<const double*>(value);
    else
        h.violate("formSet: " + hex(control) + " holds no value");
    h.record("formSet(" + hex(control) + ", " + value_text(stored) + ")");
}

int PanelCalls::post(LWXPanelID panel)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "post", h.violations);
    h.record("panel post");
    return h.user ? h.user(h) : 1;
}

void PanelCalls::destroy(LWXPanelID panel)
{
    const HostSide side;
    RecordingHost& h = host();
    check_panel(panel, "destroy", h.violations);
    h.record("panel destroy");
    --h.open_panels;
}

void RecordingHost::press(LWXPanelControlID button)
{
    const auto found = buttons_.find(button);
    if (found == buttons_.end() || found->second == nullptr) {
        violate("press: " + hex(button) + " is no button");
        return;
    }
    const ModuleSide module_side;
    found->second(the_panel(), button);
}

} // namespace support
