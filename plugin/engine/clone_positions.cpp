// SPDX-License-Identifier: MIT
// Where every clone stands. The order of the draws fixes the layout of a seed.
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "plugin/engine/clone.h"
#include "plugin/engine/index/column_axis.h"
#include "plugin/engine/index/laid_polygons.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/engine/position_list.h"
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

/// A place that a clone may take.
struct candidate_typ {
    int poly = 0;
    XYZ6_typ pos;
    double area = 0.0;   ///< only when size depends on it
    double weight = 0.0; ///< only with a density map
};

/// Draws candidates until one is accepted; the one after the last tested is taken as it is.
///
/// What is drawn does not depend on what is accepted. So some candidates are drawn ahead, and the
/// memory that their tests need is on its way while the ones before them are tested. Only a draw in
/// between, for a heading, takes the sampler back to where it would have been.
class candidate_source {
public:
    candidate_source(weight_map* wm, params_typ* settings, random& sampler, double spacing)
        : maps(wm), limits(settings), draws(sampler), widest(spacing),
          polygons(poly_data, num_polys),
          density_name(wm != nullptr ? weight_map_name(*wm, settings->density_wg) : nullptr),
          positions(spacing, settings->clone_num, column_axis(poly_data, num_polys))
    {}

    candidate_typ next()
    {
        for (std::int64_t t = 1;; ++t) {
            take();
            if (t > limits->iterations)
                return candidate;
            const double shrink = static_cast<double>(t) / limits->iterations + 1.0;
            if (check_pos(limits, &candidate.pos, candidate.area, candidate.weight,
                          widest / shrink))
                return candidate;
        }
    }

    /// The sampler, where the last candidate left it.
    random& sampler()
    {
        if (taken < drawn) {
            draws.mti = ahead[taken - 1].end;
            taken = drawn;
            most_ahead = 2;
        }
        return draws;
    }

    const laid_polygon& laid(int poly) { return polygons[poly]; }

    /// Makes the accepted positions the list.
    void finish() { positions.finish(); }

private:
    struct draw_typ {
        int poly = 0;
        std::int32_t end = 0; ///< of the generator, after this draw
        XYZ6_typ pos;
    };

    void take()
    {
        if (taken == drawn)
            draw_ahead();
        positions.answers().turn_to(taken);
        const draw_typ& draw = ahead[taken++];
        candidate.poly = draw.poly;
        candidate.pos = draw.pos;
        if (limits->size_poly_area == 1)
            candidate.area = plain_lists ? calc_poly_area(candidate.poly, poly_data)
                                         : polygons[candidate.poly].area;
        if (limits->density_wg != 0 && maps != nullptr)
            candidate.weight =
                maps->calc_weight(poly_data[candidate.poly].polID, candidate.pos, density_name);
    }

    void draw_ahead()
    {
        taken = 0;
        drawn = 0;
        int poly = draw_polygon();
        for (;;) {
            draw_typ& draw = ahead[drawn++];
            draw.poly = poly;
            draw.pos = point_on(poly);
            draw.end = draws.mti;
            // Not into the generator's next block: from there is no way back.
            const bool last = drawn == most_ahead || draws.mti + most_draws > random::block;
            if (draws.mti < random::block) {
                poly = draw_polygon();
                polygons.prefetch(poly);
            }
            positions.answers().announce(drawn - 1, draw.pos, widest);
            if (last) {
                draws.mti = draw.end;
                break;
            }
        }
        if (most_ahead < ahead.size())
            ++most_ahead;
    }

    int draw_polygon() { return draws.z_zakresu(0, num_polys - 1); }

    /// What z_polygonu gives; each polygon is laid flat once.
    XYZ6_typ point_on(int poly)
    {
        return plain_lists ? draws.z_polygonu(&poly_data[poly]) : polygons[poly].face.draw(draws);
    }

    static constexpr int most_draws = 3; ///< of one candidate: polygon, column, height

    weight_map* maps;
    params_typ* limits;
    random& draws;
    double widest; ///< the spacing before it shrinks from try to try
    laid_polygons polygons;
    const char* density_name;
    position_setup positions;
    candidate_typ candidate;
    std::array<draw_typ, position_index::most_announced> ahead;
    std::size_t drawn = 0;
    std::size_t taken = 0;
    std::size_t most_ahead = 2;
};

/// `angle_name`: of the map that turns the pitch, or null.
void align(pos_typ& node, weight_map* wm, const char* angle_name, const params_typ& settings,
           candidate_source& candidates)
{
    const face6_typ& polygon = poly_data[node.poly];
    const laid_polygon& laid = candidates.laid(node.poly);
    double p = laid.pitch;
    const double h =
        laid.any_heading ? candidates.sampler().z_zakresu(-float_pi, float_pi) : laid.heading;
    if (settings.p_angle_wg != 0 && wm != nullptr) {
        if (settings.p_absolute == 1)
            p = half_pi;
        p = p + wm->calc_weight(polygon.polID, node.pos, angle_name) * half_pi;
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
    const char* const angle_name =
        wm != nullptr ? weight_map_name(*wm, settings->p_angle_wg) : nullptr;
    for (int i = 0; i < settings->clone_num; ++i) {
        const candidate_typ taken = candidates.next();
        pos_typ& node = *add_item(taken.pos);
        node.poly = taken.poly;
        if (settings->size_poly_area == 1)
            node.poly_area = taken.area;
        if (settings->h_align == 1 || settings->p_align == 1)
            align(node, wm, angle_name, *settings, candidates);
        progress.step();
    }
    candidates.finish();
}

} // namespace dastrel
