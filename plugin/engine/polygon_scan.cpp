// SPDX-License-Identifier: MIT
// Scans the ground into owned records, and frees all memory of a run.
#include <cmath>
#include <cstddef>

#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/index/node_memory.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/host/run_state.h"
#include "plugin/settings/params.h"

namespace dastrel {

namespace {

bool selected(const EDPolygonInfo& polygon) { return (polygon.flags & EDPF_SELECTED) != 0; }

/// 0 for a polygon that faces straight up, pi for one that faces down. A normal that is not a
/// number passes: neither comparison holds.
bool outside_slope_limits(XYZ6_typ normal, const params_typ& settings)
{
    const double x = normal.x();
    const double z = normal.z();
    const double slope = std::atan2(std::sqrt(x * x + z * z), normal.y());
    return slope > settings.slope_max || settings.slope_min > slope;
}

template <typename Node> void release_list(Node*& head)
{
    delete head;
    head = nullptr;
}

template <typename Value> void release_array(Value*& array)
{
    delete[] array;
    array = nullptr;
}

} // namespace

int check_for_nurbs(void* /*callback_data*/, const EDPolygonInfo* polygon)
{
    if (selected(*polygon) && polygon->type != LWPOLTYPE_FACE)
        --num_polys;
    return 0;
}

int polscan(void* settings, const EDPolygonInfo* polygon)
{
    if (polygon->type != LWPOLTYPE_FACE)
        return 0;
    if (!selected(*polygon))
        return 0;
    XYZ6_typ normal;
    edit->polyNormal(edit->state, polygon->pol, normal);
    const params_typ& limits = *static_cast<const params_typ*>(settings);
    if (limits.slope_limits == 1 && outside_slope_limits(normal, limits))
        return 0;
    face6_typ& record = data[poly_num];
    record.polID = polygon->pol;
    record.normal = normal;
    record.num_points = polygon->numPnts;
    release_array(record.points);
    record.points = new XYZ6_typ[static_cast<std::size_t>(polygon->numPnts)];
    for (int i = 0; i < polygon->numPnts; ++i)
        record.points[i] = edit->pointInfo(edit->state, polygon->points[i])->position;
    ++poly_num;
    return 0;
}

int reserve_memory(int n)
{
    release_array(poly_data); // an array is destroyed from its last record to its first
    poly_data = new face6_typ[static_cast<std::size_t>(n)];
    return poly_data == nullptr ? 1 : 0;
}

void free_memory()
{
    release_array(poly_data);
    discard_positions();
    release_array(pointID);
    release_point_memory();
    release_list(UVs);
    release_list(WGs);
    release_list(MMs);
    release_list(MNs);
    release_list(STs);
    release_array(WG_val);
    release_node_memory();
}

} // namespace dastrel
