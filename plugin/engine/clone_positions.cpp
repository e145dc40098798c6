// SPDX-License-Identifier: MIT
// The positions of the clones. The order of the draws determines the layout of a seed.
#include <cmath>
#include <cstdint>

#include "plugin/engine/candidates.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/engine/progress_monitor.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"
#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"
#include "plugin/settings/params.h"
#include "plugin/weights/LW6-weight.h"

namespace dastrel {

namespace {

constexpr double half_pi = 1.5707963267948966;
/// Single-precision pi, widened: the bounds of a heading that is drawn.
constexpr double float_pi = 3.1415927410125732;

/// Heading and pitch of the clone at `node`: those of the polygon's normal, the pitch changed by
/// the weight map `angle_name` (null: none).
void align(pos_typ& node, weight_map* wm, const char* angle_name, const params_typ& settings,
           candidate_source& candidates)
{
    double p = candidates.pitch(node.poly);
    double h = 0.0;
    if (!candidates.heading(node.poly, h)) // the normal is along the Y axis
        h = candidates.sampler().z_zakresu(-float_pi, float_pi);
    if (settings.p_angle_wg != 0 && wm != nullptr) {
        if (settings.p_absolute == 1)
            p = half_pi;
        p = p + wm->calc_weight(poly_data[node.poly].polID, node.pos, angle_name) * half_pi;
    }
    node.norm_p = p;
    node.norm_h = h;
}

} // namespace

void set_positions(weight_map* wm, params_typ* settings)
{
    const double total_area = calc_area(poly_data, num_polys);
    // sqrt: the side of the square that each clone would own in an even spread
    const double spacing = settings->distribution * std::sqrt(total_area / settings->clone_num);
    poly_avg_area = total_area / num_polys;
    discard_positions();
    progress_monitor progress("Please wait", settings->clone_num);
    random sampler;
    sampler.fixed(settings->seed);
    candidate_source candidates(spacing, settings->clone_num, sampler);
    const char* const density_name =
        wm != nullptr ? weight_map_name(*wm, settings->density_wg) : nullptr;
    const char* const angle_name =
        wm != nullptr ? weight_map_name(*wm, settings->p_angle_wg) : nullptr;
    for (int i = 0; i < settings->clone_num; ++i) {
        candidate_draw candidate;
        double area = 0.0;
        for (std::int64_t t = 1;; ++t) {
            candidate = candidates.next();
            double weight = 0.0;
            if (settings->size_poly_area == 1)
                area = candidates.area(candidate.poly);
            if (settings->density_wg != 0 && wm != nullptr)
                weight =
                    wm->calc_weight(poly_data[candidate.poly].polID, candidate.pos, density_name);
            if (t > settings->iterations)
                break; // the candidate after the last tested one is taken as it is
            const double shrink = static_cast<double>(t) / settings->iterations + 1.0;
            if (check_pos(settings, &candidate.pos, area, weight, spacing / shrink))
                break;
        }
        pos_typ& node = *add_item(candidate.pos);
        node.poly = candidate.poly;
        if (settings->size_poly_area == 1)
            node.poly_area = area;
        if (settings->h_align == 1 || settings->p_align == 1)
            align(node, wm, angle_name, *settings, candidates);
        progress.step();
    }
    candidates.finish();
}

} // namespace dastrel
