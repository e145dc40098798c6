// SPDX-License-Identifier: MIT
/// A panel with a control of every class, described as a command describes it.
#pragma once

#include <string>
#include <vector>

#include "hostapi/module.h"
#include "hostapi/panel.h"
#include "modeler/errors.h"

namespace panel_sample {

enum : LWXPanelControlID {
    about = 0x10,
    count,
    linked,
    size,
    turn,
    map,
    jitter,
    clear,
    basic,
    advanced,
    tabs
};

inline constexpr LWXPanelControl controls[] = {
    {about, "About", "vButton"}, {count, "Count", "integer"}, {linked, "Linked", "iBoolean"},
    {size, "Size", "percent"},   {turn, "Turn", "angle"},     {map, "Map", "iPopChoice"},
    {jitter, "Jitter", "float"}, {clear, "Reset", "vButton"}, {0, nullptr, nullptr}};

inline constexpr LWXPanelDataDesc types[] = {
    {about, "About", "vButton"}, {count, "Count", "integer"}, {linked, "Linked", "integer"},
    {size, "Size", "float"},     {turn, "Turn", "float"},     {map, "Map", "integer"},
    {jitter, "Jitter", "float"}, {clear, "Reset", "vButton"}, {0, nullptr, nullptr}};

inline LWXPanelFuncs* panels = nullptr; ///< of the running command, for its button functions

inline LWXPanelFuncs* fetch(GlobalFunc* global)
{
    panels = static_cast<LWXPanelFuncs*>(global(LWXPANELFUNCS_GLOBAL, 0));
    return panels;
}

inline void reset(LWXPanelID panel, LWXPanelControlID)
{
    const int whole = 30;
    const double real = 0.1;
    panels->formSet(panel, count, &whole);
    panels->formSet(panel, size, &real);
}

inline constexpr LWXPanelControlID basic_members[] = {size, count, 0};
inline constexpr LWXPanelControlID advanced_members[] = {turn, map, jitter, 0};
inline constexpr LWXPanelControlID tab_members[] = {basic, advanced, 0};
inline constexpr LWXPanelControlID ruled[] = {size, 0};
inline constexpr const char* choices[] = {"none", "Height", "Sway", nullptr};

inline LWXPanelHint hint_of(LWXPanelHintKind kind, LWXPanelControlID id, const char* text = nullptr,
                            const LWXPanelControlID* members = nullptr)
{
    return {kind, id, text, members, nullptr, nullptr};
}

inline std::vector<LWXPanelHint> good_hints()
{
    return {hint_of(XpLABEL, 0, "Sample 1.0"),
            hint_of(XpLABEL, basic, "Basic"), // before what it names
            hint_of(XpGROUP_, basic, nullptr, basic_members),
            hint_of(XpGROUP_, advanced, nullptr, advanced_members),
            hint_of(XpLABEL, advanced, "Advanced"),
            hint_of(XpTABS_, tabs, nullptr, tab_members),
            hint_of(XpDIVADD, count),
            {XpSTRLIST, map, nullptr, nullptr, choices, nullptr},
            {XpBUTNOTIFY, clear, nullptr, nullptr, nullptr, &reset},
            hint_of(XpENABLEMSG_, linked, "Sizes are linked", ruled),
            hint_of(XpEND, 0)};
}

/// Makes a panel of the tables above with these hints.
inline LWXPanelID make(LWXPanelFuncs* funcs, const std::vector<LWXPanelHint>& hints)
{
    const LWXPanelID panel = funcs->create(LWXP_FORM, controls);
    if (panel == nullptr)
        return nullptr;
    funcs->describe(panel, types, nullptr, nullptr);
    funcs->hint(panel, 0, hints.data());
    return panel;
}

/// Step and text of the ModuleError that `call` throws; "nothing" when it throws none.
template <typename Call> std::string blame_of(Call call)
{
    try {
        call();
    } catch (const modeler::ModuleError& error) {
        return error.step() + ": " + error.what();
    }
    return "nothing";
}

} // namespace panel_sample
