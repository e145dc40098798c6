// SPDX-License-Identifier: MIT
#include "plugin/settings/params.h"

#include "plugin/host/run_state.h"
#include "plugin/settings/control_ids.h"

namespace dastrel {

namespace {

// Angles are counted with this short pi on purpose: the panel shows 9.9997 and 179.995 degrees.
constexpr double short_pi = 3.1415;
constexpr double default_turn = 10 * short_pi / 180;

void get(LWXPanelControlID control, std::int32_t& field)
{
    field = *static_cast<const std::int32_t*>(xpanf->formGet(xpanel, control));
}

void get(LWXPanelControlID control, double& field)
{
    field = *static_cast<const double*>(xpanf->formGet(xpanel, control));
}

void set(LWXPanelControlID control, const std::int32_t& field)
{
    xpanf->formSet(xpanel, control, &field);
}

void set(LWXPanelControlID control, const double& field)
{
    xpanf->formSet(xpanel, control, &field);
}

/// Calls `transfer` with each control and the field behind it, in the order in which a host sees
/// the calls.
template <typename Transfer> void for_each_setting(params_typ& settings, Transfer transfer)
{
    transfer(ID_CLONE_NUM, settings.clone_num);
    transfer(ID_SIZE_VAR_X, settings.size_var_x);
    transfer(ID_SIZE_VAR_Y, settings.size_var_y);
    transfer(ID_SIZE_VAR_Z, settings.size_var_z);
    transfer(ID_SIZE_INDEP, settings.size_indep);
    transfer(ID_SIZE_POLY_AREA, settings.size_poly_area);
    transfer(ID_H_MIN, settings.h_min);
    transfer(ID_H_MAX, settings.h_max);
    transfer(ID_P_MAX, settings.p_max);
    transfer(ID_P_MIN, settings.p_min);
    transfer(ID_B_MAX, settings.b_max);
    transfer(ID_B_MIN, settings.b_min);
    transfer(ID_DISTRIBUTION, settings.distribution);
    transfer(ID_ITERATIONS, settings.iterations);
    transfer(ID_H_ALIGN, settings.h_align);
    transfer(ID_P_ALIGN, settings.p_align);
    transfer(ID_DENSITY_WG, settings.density_wg);
    transfer(ID_SEED, settings.seed);
    transfer(ID_JITTER, settings.jitter);
    transfer(ID_SLOPE_LIMITS, settings.slope_limits);
    transfer(ID_SLOPE_MIN, settings.slope_min);
    transfer(ID_SLOPE_MAX, settings.slope_max);
    transfer(ID_SIZE_WG, settings.size_wg);
    transfer(ID_SIZE_WG_INFLUENCE, settings.size_wg_influence);
    transfer(ID_DEP_POWER, settings.dep_power);
    transfer(ID_AUTO_MORPH_MAPS, settings.auto_morph_maps);
    transfer(ID_P_ANGLE_WG, settings.p_angle_wg);
    transfer(ID_P_ABSOLUTE, settings.p_absolute);
}

} // namespace

params_typ::params_typ()
    : akt_clone(0), p_absolute(0), auto_morph_maps(0), dep_power(0.5), size_wg_influence(0.5),
      size_wg(0), slope_max(short_pi), slope_min(0.0), slope_limits(0), jitter(0.0),
      distribution(0.8), h_align(1), p_align(1), b_max(default_turn), b_min(-default_turn),
      p_max(default_turn), p_min(-default_turn), h_max(default_turn), h_min(-default_turn),
      size_var_x(0.25), size_var_y(0.25), size_var_z(0.25), size_indep(0), clone_num(30),
      iterations(15), size_poly_area(0), seed(25), density_wg(0), p_angle_wg(0)
{}

void set_params(params_typ* settings)
{
    for_each_setting(*settings,
                     [](LWXPanelControlID control, const auto& field) { set(control, field); });
}

void get_params(params_typ* settings)
{
    for_each_setting(*settings,
                     [](LWXPanelControlID control, auto& field) { get(control, field); });
}

} // namespace dastrel
