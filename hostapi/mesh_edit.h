// SPDX-License-Identifier: MIT
/// What a "MeshDataEdit" server may do to the mesh while its edit is open.
///
/// A server begins one edit, reads what is there, adds points, polygons and map values, and ends
/// the edit with `done`. It changes nothing that was there but values of vertex maps. The host sees
/// to undo. Layers are in the foreground (worked on), in the background (looked at), or hidden from
/// the edit; what is added goes into a foreground layer of the host's choice.
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/// Which layers an operation looks at. `OPLYR_FG | OPLYR_BG` is both.
enum { OPLYR_FG = 1, OPLYR_BG = 2 };

/// Which points or polygons a count counts.
enum { OPCOUNT_ALL = 0, OPCOUNT_SELECTED = 1 };

/// Which points and polygons an edit may touch, given when it is begun.
enum { OPSEL_USER = 1 }; ///< as the user selected them; nothing selected means everything

/// Codes of an edit. EDERR_NONE is success; every other value is a failure.
enum {
    EDERR_NONE = 0,
    EDERR_NOMEMORY = 1, ///< memory, or the room of a layer, ended; nothing more can be added
    EDERR_BADLAYER = 2, ///< the layers are none of OPLYR_*
    EDERR_BADARGS = 3   ///< an argument is wrong, or the edit is over; nothing was done
};

/// Bits of EDPolygonInfo::flags.
enum { EDPF_SELECTED = 1 };

/// A polygon as the host tells of it. The record and its array are the host's. They are valid until
/// the next `polyInfo`, or, for a scan, until the callback returns; the ids in them stay valid as
/// all ids do.
typedef struct EDPolygonInfo {
    LWPolID pol;           ///< the polygon's id
    LWID type;             ///< such as LWPOLTYPE_FACE
    int numPnts;           ///< number of points, 0 or more; a point may be there more than once
    const LWPntID* points; ///< their ids, clockwise for one who looks at the front
    int flags;             ///< bits EDPF_*
} EDPolygonInfo;

/// A point as the host tells of it. The record and the value are the host's, and valid until the
/// next call on this edit.
typedef struct EDPointInfo {
    LWPntID pnt;             ///< the point's id
    double position[3];      ///< x (right), y (up), z (forward), metres
    const float* vmap_value; ///< its value in the map selected by `pointVSet`, as many floats as
                             ///< the map's type has; null: it has none
} EDPointInfo;

/// Called once for each polygon of a scan, with the `data` of the scan. [edit]
/// It may call every operation of the edit, `polyScan` included; after `done` it is not called
/// again. Returns EDERR_NONE to go on; any other value ends the scan, which then returns that
/// value.
typedef int EDPolyScanFunc(void* data, const EDPolygonInfo* polygon);

/// One open edit. Every operation takes `state` first, unchanged. The table is the host's and stays
/// as it is until the activation function returns. No entry is null.
///
/// What is added has its id at once, and can be asked for by that id; counts and scans do not see
/// it in this edit. Vertex map types are the packed LWVMAP_* values. Names, positions, values and
/// lists of ids that the module gives are read during the call, and not kept.
typedef struct MeshEditOp {
    void* state; ///< the host's own

    /// Ends the edit. [edit, once; no other operation may follow]
    /// `error` EDERR_NONE keeps everything that was added, as one undo step; any other value keeps
    /// nothing. `selection_mode` 0 leaves the selection as it is. An edit that is not ended when
    /// the activation function returns is kept by no host, and told to the user as a failure.
    void (*done)(void* state, int error, int selection_mode);

    /// Number of points or polygons of the layers `layer` (OPLYR_*), by `mode` (OPCOUNT_*), as they
    /// were when the edit was begun. [edit]
    /// 0 for arguments that are none of these. A point is selected when a polygon of it is.
    int (*pointCount)(void* state, int layer, int mode);
    int (*polyCount)(void* state, int layer, int mode);

    /// Calls `callback` for every polygon of the layers `layer`, selected or not, in the host's own
    /// order, before it returns. [edit]
    /// The order is the same for every scan of one edit. Returns EDERR_NONE, EDERR_BADLAYER,
    /// EDERR_NOMEMORY, EDERR_BADARGS when the callback ended the edit, or what ended the scan.
    int (*polyScan)(void* state, EDPolyScanFunc* callback, void* data, int layer);

    /// Tells of one point. [edit] Null when the id names none.
    const EDPointInfo* (*pointInfo)(void* state, LWPntID point);

    /// Tells of one polygon. [edit] Null when the id names none, or memory ended.
    const EDPolygonInfo* (*polyInfo)(void* state, LWPolID polygon);

    /// Writes the polygon's unit normal to `normal` (x, y, z), on its front; the zero vector where
    /// it has no area. [edit] Returns 1, or 0 with nothing written when the id names none.
    int (*polyNormal)(void* state, LWPolID polygon, double normal[3]);

    /// Selects the vertex map whose values `pointInfo` and `pointVGet` report from now on. [edit]
    /// `map` is a handle given by an earlier call of this edit, or null to select by type and name.
    /// Returns the map's handle, valid until `done`, or null when no layer holds such a map: then
    /// no point has a value. Maps of one type and name in several layers are one map here.
    void* (*pointVSet)(void* state, void* map, LWID type, const char* name);

    /// Copies the point's value in the selected map to `value`, which holds as many floats as the
    /// type has. [edit] Returns 1, or 0 with nothing written when the point has no value.
    int (*pointVGet)(void* state, LWPntID point, float* value);

    /// Sets the point's value in the map of that type and name to `dimension` floats; the map is
    /// made when it is not there. [edit]
    /// Returns EDERR_NONE, EDERR_BADARGS (the id names no point, or a map of that type and name has
    /// another dimension) or EDERR_NOMEMORY.
    int (*pntVMap)(void* state, LWPntID point, LWID type, const char* name, int dimension,
                   const float* value);

    /// Adds a free point at `position` (x, y, z), metres. [edit]
    /// Returns its id. Null where there is no position, or where memory or the layer's room ended:
    /// the edit then stays open, adds nothing more, and is not kept.
    LWPntID (*addPoint)(void* state, const double position[3]);

    /// Adds a polygon over `count` point ids, clockwise for one who looks at its front. [edit]
    /// All points are of the layer that the edit adds to: those that the edit added are. The
    /// polygon takes the surface and the other tags of `template_polygon` (null: none); `surface`,
    /// when not null, names another surface for it. Returns its id. Null where an id names nothing
    /// here or the count is negative: nothing was added. Null, too, where memory or the layer's
    /// room ended or the type is not of four printable characters: the edit then stays open, adds
    /// nothing more, and is not kept.
    LWPolID (*addPoly)(void* state, LWID type, LWPolID template_polygon, const char* surface,
                       int count, const LWPntID* points);
} MeshEditOp;

/// Begins an edit. [run, while no other edit is open]
/// The buffer sizes (bytes for each point and polygon) are 0 when the caller wants no storage of
/// its own; `selection_mode` is OPSEL_*. Returns the edit, owned by the host and never freed by the
/// module, or null when the mesh cannot be edited now: the activation function then returns
/// AFUNC_BADLOCAL.
typedef MeshEditOp* MeshEditBegin(int point_buffer, int polygon_buffer, int selection_mode);

#ifdef __cplusplus
}
#endif
