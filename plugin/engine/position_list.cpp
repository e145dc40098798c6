// SPDX-License-Identifier: MIT
// The list of positions, in ascending X, and the test that keeps them apart.
#include "plugin/engine/position_list.h"

#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"
#include "plugin/settings/params.h"
#include "plugin/util/convert.h"

namespace dastrel {

namespace {

/// The positions of the current position_setup; null: use the plain list.
indexed_positions* placed = nullptr;

/// Clones on polygons smaller than the mean may stand closer, down to half the spacing.
double spacing_for_area(double spacing, double area)
{
    double r = area / poly_avg_area;
    if (r < 0.5)
        r = 0.5;
    return spacing * r;
}

/// A weight above 0 packs clones, one below 0 spreads them. `percent` is the weight times 100.
double spacing_for_density(double spacing, double percent)
{
    if (percent < -1)
        return spacing * (-percent / 20 + 1);
    if (percent > 1)
        return spacing / (percent / 20 + 1);
    return spacing;
}

/// Thins clones where the weight is low; draws from the run's sampler unless the weight is so low
/// that none may stand there. `percent` is the weight times 100.
bool thinned_out(double percent)
{
    const double v = percent + 100;
    if (v <= 20)
        return true;
    return losoj.z_zakresu(1, to_int(v)) <= 4;
}

bool too_close(const XYZ6_typ& pos, double d)
{
    if (placed != nullptr)
        return placed->too_close(pos, d);
    for (const pos_typ* q = pos_list; q != nullptr; q = q->next) {
        if (q->pos.x() > pos.x() + d)
            return false; // no later node can be closer in X
        if (q->pos.x() > pos.x() - d && d > pos.calc_distance(q->pos))
            return true;
    }
    return false;
}

} // namespace

position_setup::position_setup(double spacing, int expected, int dominant_axis)
    : store(spacing, expected > 0 ? static_cast<std::size_t>(expected) : 0, dominant_axis)
{
    if (!plain_lists)
        placed = &store;
}

position_setup::~position_setup() { placed = nullptr; }

void position_setup::finish()
{
    if (placed != nullptr)
        placed->link(pos_list);
    placed = nullptr;
}

bool check_pos(params_typ* settings, XYZ6_typ* pos, double area, double weight, double spacing)
{
    double d = spacing;
    if (settings->size_poly_area == 1 && poly_avg_area > area)
        d = spacing_for_area(d, area);
    if (settings->density_wg != 0) {
        const double percent = weight * 100;
        d = spacing_for_density(d, percent);
        if (thinned_out(percent))
            return false;
    }
    return !too_close(*pos, d);
}

pos_typ* add_item(XYZ6_typ pos)
{
    if (placed != nullptr)
        return placed->add(pos);
    pos_typ* const node = new pos_typ;
    node->pos = pos;
    if (pos_list == nullptr || pos_list->pos.x() > pos.x()) {
        node->next = pos_list;
        pos_list = node;
        return node;
    }
    pos_typ* q = pos_list;
    while (q->next != nullptr && !(q->next->pos.x() > pos.x()))
        q = q->next;
    node->next = q->next;
    q->next = node;
    return node;
}

void discard_positions()
{
    for (int i = 0; i < par.clone_num && pos_list != nullptr; ++i) {
        pos_typ* const following = pos_list->next;
        delete pos_list;
        pos_list = following;
    }
    pos_list = nullptr;
}

} // namespace dastrel
