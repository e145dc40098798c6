// SPDX-License-Identifier: MIT
/// The global state of the module. A run fills everything but `par` and `losoj`, and releases it at
/// its end. There is one run at a time, on the host's thread: no locking.
#pragma once

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

class face6_typ;
class IDs_typ;
class params_typ;
class pos_typ;
class random;
class UV_typ;

// Hidden visibility: no indirection through the GOT.
#pragma GCC visibility push(hidden)

extern params_typ par;    ///< the settings; live as long as the module is loaded
extern random losoj;      ///< the run's sampler; goes on from run to run
extern XYZ6_typ HPB_rand; ///< random heading, pitch, bank of the current clone

extern LWMessageFuncs* msg;
extern LWObjectFuncs* objfunc;
extern LWXPanelFuncs* xpanf;
extern LWXPanelID xpanel;
extern LWMonitorFuncs* monf;
extern MeshEditOp* edit;

extern face6_typ* poly_data; ///< owned array: one record for each usable foreground polygon
extern int num_polys;        ///< their number; before the scan, the most there can be
extern int poly_num;         ///< records that the scan has written so far
extern face6_typ* data;      ///< `poly_data`, as the scan writes it
extern double poly_avg_area; ///< mean area of the records
extern double* WG_val;       ///< owned array: the size weight of each record

extern pos_typ* pos_list; ///< owned list: one position for each clone, in ascending X
extern pos_typ* akt_item; ///< the position of the clone being written

extern LWPntID* pointID; ///< owned scratch array, one entry for each background point
extern int akt_point;    ///< set to 0 for each clone
extern IDs_typ* IDs;     ///< owned list: the points of the current clone
extern double size_change_x, size_change_y, size_change_z; ///< size factors of the current clone
/// The number put behind the names of morph maps; keeps its last value from run to run.
extern int morph_map_num;

/// Owned lists of the names of the vertex maps that are carried over, by type: "TXUV", "WGHT",
/// "MORF", "MNVW", "SPOT".
extern UV_typ *UVs, *WGs, *MMs, *MNs, *STs;

/// Walk the plain lists and compute every value when it is needed, without indexes, caches and
/// drawing ahead. Results are equal to the last bit; tests and benchmarks compare the two.
extern bool plain_lists;

#pragma GCC visibility pop

} // namespace dastrel
