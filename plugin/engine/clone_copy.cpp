// SPDX-License-Identifier: MIT
// The copy of the model that stands at one position.
#include <cstddef>
#include <memory>

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"
#include "plugin/settings/params.h"
#include "plugin/util/convert.h"

namespace dastrel {

namespace {

double draw_size(double area_factor, double variation)
{
    return area_factor * losoj.z_zakresu(1 - variation, 1 + variation);
}

/// A plain multiplier with a floor under the area's ratio, before the multiplication: at a power of
/// 0 every clone becomes a point.
double area_factor(const params_typ& settings)
{
    if (settings.size_poly_area != 1)
        return 1.0;
    double r = akt_item->poly_area / poly_avg_area;
    if (0.7 > r)
        r = 0.7;
    return r * settings.dep_power;
}

/// Negative weights count half, so that -1 halves a clone where 1 doubles it.
double weight_factor(double w, double influence)
{
    return w < 0 ? (w / 2) * influence + 1 : w * influence + 1;
}

/// Where the search for `old_id` in the point map ended: on its node, on the last node, or on null
/// when the map is empty.
IDs_typ* find_point(LWPntID old_id)
{
    IDs_typ* node = IDs;
    while (node != nullptr && node->old_id != old_id && node->next != nullptr)
        node = node->next;
    return node;
}

/// The current clone's copy of a background point, made when it is met for the first time.
LWPntID cloned_point(LWPntID background_point, params_typ* settings)
{
    IDs_typ* const found = find_point(background_point);
    if (found != nullptr && found->old_id == background_point)
        return found->new_id;
    const EDPointInfo* const info = edit->pointInfo(edit->state, background_point);
    const LWPntID old_id = info->pnt;
    XYZ6_typ p = calc_cloned_point(XYZ6_typ(info->position), settings);
    p = p.move(akt_item->pos);
    IDs_typ* const node = new IDs_typ;
    if (found == nullptr)
        IDs = node;
    else
        found->next = node;
    node->new_id = edit->addPoint(edit->state, p);
    node->old_id = old_id;
    carry_vertex_maps(background_point, node->new_id, settings);
    return node->new_id;
}

} // namespace

bool clone_object(params_typ* settings)
{
    HPB_rand.x() = losoj.z_zakresu(settings->h_min, settings->h_max);
    HPB_rand.y() = losoj.z_zakresu(settings->p_min, settings->p_max);
    HPB_rand.z() = losoj.z_zakresu(settings->b_min, settings->b_max);
    const double f = area_factor(*settings);
    size_change_x = draw_size(f, settings->size_var_x);
    if (settings->size_indep == 1) {
        size_change_y = draw_size(f, settings->size_var_y);
        size_change_z = draw_size(f, settings->size_var_z);
    }
    akt_point = 0;
    delete IDs; // points are shared within one clone only
    IDs = nullptr;
    if (settings->auto_morph_maps != 0)
        morph_map_num = wrapping_sum(losoj.z_zakresu(0, settings->auto_morph_maps), 1);
    edit->polyScan(edit->state, poly_clone, settings, OPLYR_BG);
    return true;
}

int poly_clone(void* settings, const EDPolygonInfo* polygon)
{
    params_typ* const clone_settings = static_cast<params_typ*>(settings);
    const auto count = static_cast<std::size_t>(polygon->numPnts);
    const auto new_ids = std::make_unique<LWPntID[]>(count);
    for (std::size_t i = 0; i < count; ++i)
        new_ids[i] = cloned_point(polygon->points[i], clone_settings);
    edit->addPoly(edit->state, polygon->type, polygon->pol, nullptr, polygon->numPnts,
                  new_ids.get());
    return EDERR_NONE;
}

XYZ6_typ calc_cloned_point(XYZ6_typ point, params_typ* settings)
{
    XYZ6_typ p = point;
    if (settings->size_indep == 1)
        p = XYZ6_typ(p.x() * size_change_x, p.y() * size_change_y, p.z() * size_change_z);
    else
        p = p * size_change_x;
    if (settings->jitter > 0.0)
        p = p * losoj.z_zakresu(1 - settings->jitter, 1 + settings->jitter);
    if (settings->size_wg > 0)
        p = p * weight_factor(WG_val[akt_item->poly], settings->size_wg_influence);
    p = p.rotate_Z(HPB_rand.z()).rotate_X(HPB_rand.y()).rotate_Y(HPB_rand.x());
    if (settings->p_align == 1)
        p = p.rotate_Z(akt_item->norm_p);
    if (settings->h_align == 1)
        p = p.rotate_Y(akt_item->norm_h);
    return p;
}

} // namespace dastrel
