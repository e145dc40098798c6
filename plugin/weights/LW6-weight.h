// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/mesh_edit.h"
#include "hostapi/scene_objects.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// Reads the scene's weight maps for a run: their names for the panel, and the mean of a map over a
/// polygon.
class weight_map {
public:
    /// One name of the list, which belongs to the host.
    class WG_typ {
    public:
        WG_typ() = default;
        WG_typ(const WG_typ&) = delete;
        WG_typ& operator=(const WG_typ&) = delete;
        /// Frees the rest of the chain.
        ~WG_typ();

        const char* name = nullptr;
        WG_typ* next = nullptr; ///< owned
    };

    explicit weight_map(MeshEditOp* mesh_edit);
    weight_map(const weight_map&) = delete;
    weight_map& operator=(const weight_map&) = delete;
    ~weight_map();

    void add_edit(MeshEditOp* mesh_edit);

    /// Counts the scene's weight maps, keeps their names, and gives the list for the panel: "none",
    /// the names, null. The caller deletes the array; the names belong to the host.
    char** get_list(LWObjectFuncs* object_functions);

    /// The map of a popup index, from 1; null for "none" and for an index without a map.
    WG_typ* get_name(int index);

    /// The plain mean of the map's values at the polygon's points, in single precision; a point
    /// without a value counts as 0. 1.0 when there are no maps, no name or no edit; 0.0 when the
    /// host does not know the polygon. The position is not used.
    double calc_weight(LWPolID polygon, XYZ6_typ position, const char* name);

    /// Whether the scene has a vertex map of the type "TDVT".
    bool get_td_info(LWObjectFuncs* object_functions);

    WG_typ* head;     ///< owned, in the host's order; null when there is no map
    MeshEditOp* edit; ///< not owned
    int count;        ///< number of weight maps, as `get_list` last counted them
};

/// The name of the map of a popup index; null, which means the weight 1.0 everywhere, for "none"
/// and for an index whose map no longer exists.
const char* weight_map_name(weight_map& reader, int index);

/// Fills `WG_val` with the weight of the map `index` for each of the first `n` polygon records; 1.0
/// for an index without a map.
void get_wg_info(int n, weight_map* reader, int index);

} // namespace dastrel
