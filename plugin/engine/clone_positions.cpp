// SPDX-License-Identifier: MIT
// Where every clone stands. The order of the draws fixes the layout of a seed.
#include <cmath>
#include <cstdint>

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

constexpr double pi = 3.141592653589793;
constexpr double half_pi = 1.5707963267948966;
/// Single-precision pi, widened: the bounds of a heading that is drawn.
constexpr double float_pi = 3.1415927410125732;

/// A place that a clone may take.
struct candidate_typ {
    int poly = 0;
    XYZ6_typ pos;
    double area = 0.0;   ///< only when size depends on it
    double weight = 0.0; ///< only with a density map
};

/// Draws candidates until one is accepted; the one after the last tested is taken as it is.
class candidate_source {
public:
    candidate_source(weight_map* wm, params_typ* settings, random& sampler, double spacing)
        : maps(wm), limits(settings), draws(sampler), widest(spacing),
          density_name(wm != nullptr ? weight_map_name(*wm, settings->density_wg) : nullptr)
    {}

    candidate_typ next()
    {
        for (std::int64_t t = 1;; ++t) {
            draw();
            if (t > limits->iterations)
                return candidate;
            const double shrink = static_cast<double>(t) / limits->iterations + 1.0;
            if (check_pos(limits, &candidate.pos, candidate.area, candidate.weight,
                          widest / shrink))
                return candidate;
        }
    }

private:
    void draw()
    {
        candidate.poly = draws.z_zakresu(0, num_polys - 1);
        face6_typ& polygon = poly_data[candidate.poly];
        candidate.pos = draws.z_polygonu(&polygon);
        if (limits->size_poly_area == 1)
            candidate.area = calc_poly_area(candidate.poly, poly_data);
        if (limits->density_wg != 0 && maps != nullptr)
            candidate.weight = maps->calc_weight(polygon.polID, candidate.pos, density_name);
    }

    weight_map* maps;
    params_typ* limits;
    random& draws;
    double widest; ///< the spacing before it shrinks from try to try
    const char* density_name;
    candidate_typ candidate;
};

/// 0 for a normal straight up and, deliberately, for one straight down.
double pitch_of(XYZ6_typ n) { return -1 < n.y() && n.y() < 1 ? std::acos(n.y()) : 0.0; }

/// Draws only for a normal along the Y axis, which has no heading of its own.
double heading_of(XYZ6_typ n, random& sampler)
{
    constexpr double tolerance = 0.001;
    if (n.z() < -tolerance || n.z() > tolerance) {
        const double h = std::acos(n.x() / std::sqrt(n.x() * n.x() + n.z() * n.z()));
        return n.z() < 0 ? -h : h;
    }
    if (n.x() > tolerance)
        return 0.0;
    if (n.x() < -tolerance)
        return pi;
    return sampler.z_zakresu(-float_pi, float_pi);
}

void align(pos_typ& node, weight_map* wm, const params_typ& settings, random& sampler)
{
    const face6_typ& polygon = poly_data[node.poly];
    double p = pitch_of(polygon.normal);
    const double h = heading_of(polygon.normal, sampler);
    if (settings.p_angle_wg != 0 && wm != nullptr) {
        const char* const name = weight_map_name(*wm, settings.p_angle_wg);
        if (settings.p_absolute == 1)
            p = half_pi;
        p = p + wm->calc_weight(polygon.polID, node.pos, name) * half_pi;
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
    candidate_source candidates(wm, settings, sampler, spacing);
    for (int i = 0; i < settings->clone_num; ++i) {
        const candidate_typ taken = candidates.next();
        pos_typ& node = *add_item(taken.pos);
        node.poly = taken.poly;
        if (settings->size_poly_area == 1)
            node.poly_area = taken.area;
        if (settings->h_align == 1 || settings->p_align == 1)
            align(node, wm, *settings, sampler);
        progress.step();
    }
}

} // namespace dastrel
