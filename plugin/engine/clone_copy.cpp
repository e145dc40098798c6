// SPDX-License-Identifier: MIT
// Copies the model to one position.
#include <cstddef>
#include <vector>

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/index/point_table.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/rotation.h"
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

/// The rotations of the current clone, shared by all its points.
struct {
    cached_rotation bank;
    cached_rotation pitch;
    cached_rotation heading;
    cached_rotation normal_pitch;
    cached_rotation normal_heading;

    void update(const params_typ& settings)
    {
        bank.set_angle(HPB_rand.z());
        pitch.set_angle(HPB_rand.y());
        heading.set_angle(HPB_rand.x());
        if (settings.p_align == 1)
            normal_pitch.set_angle(akt_item->norm_p);
        if (settings.h_align == 1)
            normal_heading.set_angle(akt_item->norm_h);
    }
} rotations;

/// calc_cloned_point with up-to-date rotations. Inline: it is called for every point.
inline XYZ6_typ shaped(const XYZ6_typ& point, const params_typ& settings)
{
    const bool independent = settings.size_indep == 1;
    XYZ6_typ p(point.x() * size_change_x, point.y() * (independent ? size_change_y : size_change_x),
               point.z() * (independent ? size_change_z : size_change_x));
    if (settings.jitter > 0.0)
        p = p * losoj.z_zakresu(1 - settings.jitter, 1 + settings.jitter);
    if (settings.size_wg > 0)
        p = p * weight_factor(WG_val[akt_item->poly], settings.size_wg_influence);
    p = rotations.bank.about_Z(p);
    p = rotations.pitch.about_X(p);
    p = rotations.heading.about_Y(p);
    if (settings.p_align == 1)
        p = rotations.normal_pitch.about_Z(p);
    if (settings.h_align == 1)
        p = rotations.normal_heading.about_Y(p);
    return p;
}

/// An index of the list `IDs`, and the list's last node.
point_table points;
IDs_typ* last_point;

const IDs_typ& append_point(LWPntID old_id, LWPntID new_id)
{
    IDs_typ* const node = new IDs_typ;
    node->old_id = old_id;
    node->new_id = new_id;
    if (IDs == nullptr)
        IDs = node;
    else
        last_point->next = node;
    last_point = node;
    return *node;
}

void forget_points()
{
    delete IDs;
    IDs = nullptr;
    last_point = nullptr;
    points.clear();
}

/// Copies a background point into the current clone.
const IDs_typ& copy_point(LWPntID background_point, params_typ* settings)
{
    if (IDs == nullptr)
        rotations.update(*settings);
    const EDPointInfo* const info = edit->pointInfo(edit->state, background_point);
    const LWPntID old_id = info->pnt;
    const XYZ6_typ p = shaped(XYZ6_typ(info->position), *settings).move(akt_item->pos);
    const IDs_typ& node = append_point(old_id, edit->addPoint(edit->state, p));
    carry_vertex_maps(background_point, node.new_id, settings);
    return node;
}

/// The current clone's copy of a background point, made at its first use. `slot`: that of the
/// point, or null to look it up.
LWPntID cloned_point(LWPntID background_point, point_table::slot_typ* slot, params_typ* settings)
{
    if (plain_lists) {
        const IDs_typ* node = IDs;
        while (node != nullptr && node->old_id != background_point)
            node = node->next;
        return (node != nullptr ? *node : copy_point(background_point, settings)).new_id;
    }
    if (slot == nullptr)
        slot = &points.slot(background_point);
    if (points.has_copy(*slot))
        return point_table::copy(*slot);
    const IDs_typ& node = copy_point(background_point, settings);
    points.set_copy(node.old_id == background_point ? *slot : points.slot(node.old_id),
                    node.new_id);
    return node.new_id;
}

/// The current clone's copy of a background point. Inline for points that are copied already, which
/// are most.
inline LWPntID cloned_point(LWPntID background_point, params_typ* settings)
{
    point_table::slot_typ* const slot = points.find_first_probe(background_point);
    if (slot != nullptr && points.has_copy(*slot))
        return point_table::copy(*slot);
    return cloned_point(background_point, slot, settings);
}

/// The corners of a copied polygon; static to reuse its memory.
std::vector<LWPntID> corners;

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
    forget_points(); // points are shared within one clone only
    if (settings->auto_morph_maps != 0)
        morph_map_num = wrapping_sum(losoj.z_zakresu(0, settings->auto_morph_maps), 1);
    edit->polyScan(edit->state, poly_clone, settings, OPLYR_BG);
    return true;
}

int poly_clone(void* settings, const EDPolygonInfo* polygon)
{
    params_typ* const clone_settings = static_cast<params_typ*>(settings);
    const auto count = static_cast<std::size_t>(polygon->numPnts);
    if (corners.size() < count)
        corners.resize(count);
    const LWPntID* const originals = polygon->points;
    LWPntID* const copies = corners.data();
    for (std::size_t i = 0; i < count; ++i)
        copies[i] = cloned_point(originals[i], clone_settings);
    edit->addPoly(edit->state, polygon->type, polygon->pol, nullptr, polygon->numPnts, copies);
    return EDERR_NONE;
}

void release_point_memory()
{
    forget_points();
    points.release();
    corners = std::vector<LWPntID>();
}

XYZ6_typ calc_cloned_point(XYZ6_typ point, params_typ* settings)
{
    rotations.update(*settings);
    return shaped(point, *settings);
}

} // namespace dastrel
