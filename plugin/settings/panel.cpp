// SPDX-License-Identifier: MIT
#include "plugin/settings/panel.h"

#include <initializer_list>

#include "plugin/host/gui_messages.h"
#include "plugin/host/run_state.h"
#include "plugin/settings/control_ids.h"
#include "plugin/settings/params.h"

namespace dastrel {

namespace {

constexpr LWXPanelControl _ctl[] = {{ID_ABOUT, "About", "vButton"},
                                    {ID_CLONE_NUM, "Number of Clones", "integer"},
                                    {ID_SIZE_INDEP, "Independent Sizes", "iBoolean"},
                                    {ID_SIZE_VAR_X, "Size Variations", "percent"},
                                    {ID_SIZE_VAR_Y, "Y", "percent"},
                                    {ID_SIZE_VAR_Z, "Z", "percent"},
                                    {ID_SIZE_WG, "Size WeightMap", "iPopChoice"},
                                    {ID_SIZE_WG_INFLUENCE, "Size WeightMap Influence", "percent"},
                                    {ID_SIZE_POLY_AREA, "Size depends on Poly Area", "iBoolean"},
                                    {ID_DEP_POWER, "Dependence Power", "percent"},
                                    {ID_DENSITY_WG, "Density WeightMap", "iPopChoice"},
                                    {ID_H_MIN, "Random rotation H Min", "angle"},
                                    {ID_H_MAX, "H Max", "angle"},
                                    {ID_P_MIN, "P Min", "angle"},
                                    {ID_P_MAX, "P Max", "angle"},
                                    {ID_B_MIN, "B Min", "angle"},
                                    {ID_B_MAX, "B Max", "angle"},
                                    {ID_ZERO_ANGLES, "Zero Angles", "vButton"},
                                    {ID_H_ALIGN, "H Align with normals", "iBoolean"},
                                    {ID_P_ALIGN, "P Align with normals", "iBoolean"},
                                    {ID_JITTER, "Jitter Cloned points", "float"},
                                    {ID_SLOPE_LIMITS, "Slope Angle Limits", "iBoolean"},
                                    {ID_SLOPE_MIN, "Min Slope Angle", "angle"},
                                    {ID_SLOPE_MAX, "Max Slope Angle", "angle"},
                                    {ID_DISTRIBUTION, "Distribution", "percent"},
                                    {ID_ITERATIONS, "Iterations", "integer"},
                                    {ID_SEED, "Random Seed", "integer"},
                                    {ID_AUTO_MORPH_MAPS, "Auto morph maps", "integer"},
                                    {ID_RESET_VALUES, "Reset Values", "vButton"},
                                    {ID_P_ANGLE_WG, "P angle weightmap", "iPopChoice"},
                                    {ID_P_ABSOLUTE, "Absolute", "iBoolean"},
                                    {0, nullptr, nullptr}};

constexpr LWXPanelDataDesc _cdata[] = {{ID_ABOUT, "About", "vButton"},
                                       {ID_CLONE_NUM, "Number of Clones", "integer"},
                                       {ID_SIZE_INDEP, "Independent Sizes", "integer"},
                                       {ID_SIZE_VAR_X, "Size Variations", "float"},
                                       {ID_SIZE_VAR_Y, "Y", "float"},
                                       {ID_SIZE_VAR_Z, "Z", "float"},
                                       {ID_SIZE_WG, "Size WeightMap", "integer"},
                                       {ID_SIZE_WG_INFLUENCE, "Size WeightMap Influence", "float"},
                                       {ID_SIZE_POLY_AREA, "Size depends on Poly Area", "integer"},
                                       {ID_DEP_POWER, "Dependence Power", "float"},
                                       {ID_DENSITY_WG, "Density WeightMap", "integer"},
                                       {ID_H_MIN, "Random rotation H Min", "float"},
                                       {ID_H_MAX, "H Max", "float"},
                                       {ID_P_MIN, "P Min", "float"},
                                       {ID_P_MAX, "P Max", "float"},
                                       {ID_B_MIN, "B Min", "float"},
                                       {ID_B_MAX, "B Max", "float"},
                                       {ID_ZERO_ANGLES, "Zero Angles", "vButton"},
                                       {ID_H_ALIGN, "H Align with normals", "integer"},
                                       {ID_P_ALIGN, "P Align with normals", "integer"},
                                       {ID_JITTER, "Jitter Cloned points", "float"},
                                       {ID_SLOPE_LIMITS, "Slope Angle Limits", "integer"},
                                       {ID_SLOPE_MIN, "Min Slope Angle", "float"},
                                       {ID_SLOPE_MAX, "Max Slope Angle", "float"},
                                       {ID_DISTRIBUTION, "Distribution", "float"},
                                       {ID_ITERATIONS, "Iterations", "integer"},
                                       {ID_SEED, "Random Seed", "integer"},
                                       {ID_AUTO_MORPH_MAPS, "Auto morph maps", "integer"},
                                       {ID_RESET_VALUES, "Reset Values", "vButton"},
                                       {ID_P_ANGLE_WG, "P angle weightmap", "integer"},
                                       {ID_P_ABSOLUTE, "Absolute", "integer"},
                                       {0, nullptr, nullptr}};

constexpr LWXPanelControlID basic_members[] = {ID_CLONE_NUM,
                                               ID_SIZE_INDEP,
                                               ID_SIZE_VAR_X,
                                               ID_SIZE_VAR_Y,
                                               ID_SIZE_VAR_Z,
                                               ID_SIZE_WG,
                                               ID_SIZE_WG_INFLUENCE,
                                               ID_DENSITY_WG,
                                               ID_H_MIN,
                                               ID_H_MAX,
                                               ID_P_MIN,
                                               ID_P_MAX,
                                               ID_B_MIN,
                                               ID_B_MAX,
                                               ID_ZERO_ANGLES,
                                               ID_H_ALIGN,
                                               ID_P_ALIGN,
                                               ID_SEED,
                                               0};

constexpr LWXPanelControlID advanced_members[] = {
    ID_SIZE_POLY_AREA, ID_DEP_POWER,  ID_JITTER,          ID_SLOPE_LIMITS,
    ID_SLOPE_MIN,      ID_SLOPE_MAX,  ID_P_ANGLE_WG,      ID_P_ABSOLUTE,
    ID_DISTRIBUTION,   ID_ITERATIONS, ID_AUTO_MORPH_MAPS, 0};

constexpr LWXPanelControlID tab_members[] = {ID_GROUP_BASIC, ID_GROUP_ADVANCED, 0};

constexpr LWXPanelControlID needs_p_align[] = {ID_P_ANGLE_WG, 0};
constexpr LWXPanelControlID needs_slope_limits[] = {ID_SLOPE_MAX, ID_SLOPE_MIN, 0};
constexpr LWXPanelControlID needs_size_indep[] = {ID_SIZE_VAR_Y, ID_SIZE_VAR_Z, 0};
constexpr LWXPanelControlID needs_size_wg[] = {ID_SIZE_WG_INFLUENCE, 0};
constexpr LWXPanelControlID needs_size_poly_area[] = {ID_DEP_POWER, 0};

constexpr LWXPanelHint label(LWXPanelControlID id, const char* text)
{
    return {XpLABEL, id, text, nullptr, nullptr, nullptr};
}

constexpr LWXPanelHint group(LWXPanelControlID id, const LWXPanelControlID* members)
{
    return {XpGROUP_, id, nullptr, members, nullptr, nullptr};
}

constexpr LWXPanelHint divider_after(LWXPanelControlID id)
{
    return {XpDIVADD, id, nullptr, nullptr, nullptr, nullptr};
}

constexpr LWXPanelHint choices(LWXPanelControlID id, const char* const* list)
{
    return {XpSTRLIST, id, nullptr, nullptr, list, nullptr};
}

constexpr LWXPanelHint button(LWXPanelControlID id, LWXPanelButtonFunc* pressed)
{
    return {XpBUTNOTIFY, id, nullptr, nullptr, nullptr, pressed};
}

constexpr LWXPanelHint enabled_by(LWXPanelControlID id, const LWXPanelControlID* members,
                                  const char* message)
{
    return {XpENABLEMSG_, id, message, members, nullptr, nullptr};
}

} // namespace

int display_panel(params_typ* /*record*/, char** weight_map_names)
{
    if (xpanf == nullptr) // a host without panels: there can be no panel either
        return 0;
    xpanel = xpanf->create(LWXP_FORM, _ctl);
    if (xpanel == nullptr)
        return 0;
    xpanf->describe(xpanel, _cdata, nullptr, nullptr);
    const LWXPanelHint hints[] = {
        label(0, "Dastrel 1.6"),
        group(ID_GROUP_BASIC, basic_members),
        label(ID_GROUP_BASIC, "Basic"),
        group(ID_GROUP_ADVANCED, advanced_members),
        label(ID_GROUP_ADVANCED, "Advanced"),
        {XpTABS_, ID_TABS, nullptr, tab_members, nullptr, nullptr},
        divider_after(ID_DEP_POWER),
        divider_after(ID_DENSITY_WG),
        divider_after(ID_ZERO_ANGLES),
        divider_after(ID_P_ALIGN),
        divider_after(ID_JITTER),
        divider_after(ID_SLOPE_MAX),
        divider_after(ID_ITERATIONS),
        divider_after(ID_P_ABSOLUTE),
        choices(ID_DENSITY_WG, weight_map_names),
        choices(ID_SIZE_WG, weight_map_names),
        choices(ID_P_ANGLE_WG, weight_map_names),
        button(ID_RESET_VALUES, defaults),
        button(ID_ZERO_ANGLES, zero_angles),
        button(ID_ABOUT, msg_about),
        enabled_by(ID_P_ALIGN, needs_p_align, "P Align should be enabled."),
        enabled_by(ID_SLOPE_LIMITS, needs_slope_limits, "Slope Angle is Disabled"),
        enabled_by(ID_SIZE_INDEP, needs_size_indep, "Size axes are linked"),
        enabled_by(ID_SIZE_WG, needs_size_wg, "Choose any weightmap first"),
        enabled_by(ID_SIZE_POLY_AREA, needs_size_poly_area,
                   "Control is disabled. Turn 'Size Depends on Poly Area' on first"),
        {XpEND, 0, nullptr, nullptr, nullptr, nullptr}};
    xpanf->hint(xpanel, 0, hints);
    set_params(&par); // the global settings, whatever record was passed
    return xpanf->post(xpanel);
}

void defaults(LWXPanelID /*panel*/, LWXPanelControlID /*control*/)
{
    params_typ fresh;
    set_params(&fresh);
}

void zero_angles(LWXPanelID /*panel*/, LWXPanelControlID /*control*/)
{
    constexpr double zero = 0.0;
    for (const LWXPanelControlID control :
         {ID_H_MIN, ID_H_MAX, ID_P_MAX, ID_P_MIN, ID_B_MAX, ID_B_MIN})
        xpanf->formSet(xpanel, control, &zero);
}

} // namespace dastrel
