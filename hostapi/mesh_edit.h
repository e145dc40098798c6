// SPDX-License-Identifier: MIT
/// What a "MeshDataEdit" server may do to the mesh while its edit is open.
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Which layers an operation looks at.
enum { OPLYR_FG = 1, OPLYR_BG = 2 };

/// Which points or polygons a count counts.
enum { OPCOUNT_ALL = 0, OPCOUNT_SELECTED = 1 };

/// Which points and polygons an edit may touch, given when it is begun.
enum { OPSEL_USER = 1 }; ///< as the user selected them; nothing selected means everything

/// Codes of an edit. EDERR_NONE is success; every other value is a failure.
enum { EDERR_NONE = 0, EDERR_NOMEMORY = 1, EDERR_BADLAYER = 2, EDERR_BADARGS = 3 };

/// Bits of EDPolygonInfo::flags.
enum { EDPF_SELECTED = 1 };

/// A polygon as the host tells of it. Filled by the host and valid until the next call that
/// returns one, or, for a scan, until the callback returns.
typedef struct EDPolygonInfo {
    LWPolID pol;           ///< the polygon's id
    LWID type;             ///< such as LWPOLTYPE_FACE
    int numPnts;           ///< number of points, 0 or more
    const LWPntID* points; ///< their ids in the polygon's order, `numPnts` of them
    int flags;             ///< bits EDPF_*
} EDPolygonInfo;

/// A point as the host tells of it. Filled by the host and valid until the next call that returns
/// one.
typedef struct EDPointInfo {
    LWPntID pnt;             ///< the point's id
    double position[3];      ///< x (right), y (up), z (forward), metres
    const float* vmap_value; ///< its value in the map selected by `pointVSet`, or null: it has none
} EDPointInfo;

/// Called once for each polygon of a scan. Returns EDERR_NONE to go on; any other value ends the
/// scan, which then returns that value.
typedef int EDPolyScanFunc(void* data, const EDPolygonInfo* polygon);

/// One open edit. Every operation takes `state` first, unchanged, and may be called on the host's
/// thread from the moment the edit is begun until `done` returns. Nothing that is added can be seen
/// by counts and scans before that. Vertex map types are the packed LWVMAP_* values; names are
/// texts of the caller, read during the call.
typedef struct MeshEditOp {
    void* state; ///< the host's own

    /// Finishes the edit. `error` EDERR_NONE keeps everything that was added, as one undo step; any
    /// other value keeps nothing. `selection_mode` 0 leaves the selection as it is. Called exactly
    /// once; no other operation may follow.
    void (*done)(void* state, int error, int selection_mode);

    /// Number of points or polygons of the layers `layer` (OPLYR_*), by `mode` (OPCOUNT_*).
    int (*pointCount)(void* state, int layer, int mode);
    int (*polyCount)(void* state, int layer, int mode);

    /// Calls `callback` for every polygon of the layers `layer`, selected or not, in the host's own
    /// order, before it returns. Returns EDERR_NONE, EDERR_BADLAYER, or what ended the scan.
    int (*polyScan)(void* state, EDPolyScanFunc* callback, void* data, int layer);

    /// Tells of one point. Null when the id names none.
    const EDPointInfo* (*pointInfo)(void* state, LWPntID point);

    /// Tells of one polygon. Null when the id names none.
    const EDPolygonInfo* (*polyInfo)(void* state, LWPolID polygon);

    /// Writes the polygon's unit normal to `normal` (x, y, z); the zero vector where it has no
    /// area. Returns 1, or 0 with nothing written when the id names none.
    int (*polyNormal)(void* state, LWPolID polygon, double normal[3]);

    /// Selects the vertex map whose values `pointInfo` and `pointVGet` report from now on.
    /// `map` is a handle given by an earlier call, or null to select by type and name. Returns the
    /// map's handle, or null when no layer holds such a map: then no point has a value.
    void* (*pointVSet)(void* state, void* map, LWID type, const char* name);

    /// Copies the point's value in the selected map to `value`, which holds as many floats as the
    /// type has. Returns 1, or 0 with nothing written when the point has no value.
    int (*pointVGet)(void* state, LWPntID point, float* value);

    /// Sets the point's value in the map of that type and name to `dimension` floats; the map is
    /// made when it is not there. Returns an EDERR_* code.
    int (*pntVMap)(void* state, LWPntID point, LWID type, const char* name, int dimension,
                   const float* value);

    /// Adds a free point at `position` (x, y, z). Returns its id, or null when it cannot be stored.
    LWPntID (*addPoint)(void* state, const double position[3]);

    /// Adds a polygon over `count` point ids, read during the call. It takes the surface and the
    /// other tags of `template_polygon` (null: none); `surface`, when not null, names another
    /// surface for it. Returns its id, or null when it cannot be stored.
    LWPolID (*addPoly)(void* state, LWID type, LWPolID template_polygon, const char* surface,
                       int count, const LWPntID* points);
} MeshEditOp;

/// Begins an edit. The buffer sizes (bytes for each point and polygon) are 0 when the caller wants
/// no storage of its own; `selection_mode` is OPSEL_*. Returns the edit, owned by the host, or null
/// when the mesh cannot be edited now.
typedef MeshEditOp* MeshEditBegin(int point_buffer, int polygon_buffer, int selection_mode);

#ifdef __cplusplus
}
#endif
