// SPDX-License-Identifier: MIT
/// The scatter engine: scan the ground, find the positions, copy the model. Everything works on the
/// run state of host/run_state.h.
#pragma once

#include "hostapi/mesh_edit.h"
#include "hostapi/scene_objects.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

class params_typ;
class pos_typ;
class UV_typ;
class weight_map;

// --- the scan of the ground (polygon_scan.cpp)

/// Scan callback: takes every selected polygon that is not a face off `num_polys`. Returns 0.
int check_for_nurbs(void* callback_data, const EDPolygonInfo* polygon);

/// Scan callback: records a selected face in `data`, unless the slope limits exclude it.
/// `settings`: the params_typ. Returns 0, so that the scan goes on.
int polscan(void* settings, const EDPolygonInfo* polygon);

/// Makes `poly_data` an array of `n` empty records. Returns 0.
int reserve_memory(int n);

/// Frees everything that a run has allocated.
void free_memory();

// --- the positions (clone_positions.cpp, position_list.cpp)

/// Fills `pos_list` with one position for each clone, and sets `poly_avg_area`. Needs at least one
/// record. `wm` may be null: no weight maps. The positions depend on "Random Seed", the records and
/// the settings alone, unless a density map thins them with draws of `losoj`.
void set_positions(weight_map* wm, params_typ* settings);

/// Whether a clone may be placed at `pos`, on a polygon of this area, with this density weight,
/// given the minimum spacing.
bool check_pos(params_typ* settings, XYZ6_typ* pos, double area, double weight, double spacing);

/// Links a new node at `pos` into `pos_list`, behind all nodes of equal or smaller X; the caller
/// fills in the rest.
pos_typ* add_item(XYZ6_typ pos);

/// Frees the nodes of `pos_list`, at most as many as there are clones, and empties it.
void discard_positions();

// --- the copies (clone_copy.cpp)

/// Writes the clone at `akt_item`: draws its rotation and size and copies every background polygon.
/// Returns true.
bool clone_object(params_typ* settings);

/// Scan callback: copies one background polygon into the current clone. `settings`: the
/// params_typ. Returns EDERR_NONE.
int poly_clone(void* settings, const EDPolygonInfo* polygon);

/// The point after size, jitter, size weight, rotation and alignment, before it moves to the
/// clone's position. Draws once when jitter is on.
XYZ6_typ calc_cloned_point(XYZ6_typ point, params_typ* settings);

/// Frees `IDs` and the memory beside it.
void release_point_memory();

// --- the vertex maps (vertex_maps.cpp)

/// Lists the names of all vertex maps of a type; `list` stays as it is when there are none.
void get_any_map_names(LWObjectFuncs* object_functions, LWID type, UV_typ** list);

/// Gives a clone's point the values of the background point that it was made from, and its value in
/// the map "DT_index".
void carry_vertex_maps(LWPntID old_point, LWPntID new_point, params_typ* settings);

/// The part of it for relative morphs (relative_morphs.cpp). They are offsets: sized and turned
/// like the points, but not moved. With jitter each is drawn a factor of its own.
void carry_relative_morphs(LWPntID old_point, LWPntID new_point, params_typ* settings);

} // namespace dastrel
