// SPDX-License-Identifier: MIT
#include "plugin/host/run_state.h"

#include "plugin/random/LW6-random2.h"
#include "plugin/settings/params.h"

namespace dastrel {

// Constructed at load in this order.
params_typ par;
random losoj;
XYZ6_typ HPB_rand;

LWMessageFuncs* msg;
LWObjectFuncs* objfunc;
LWXPanelFuncs* xpanf;
LWXPanelID xpanel;
LWMonitorFuncs* monf;
MeshEditOp* edit;

face6_typ* poly_data;
int num_polys;
int poly_num;
face6_typ* data;
double poly_avg_area;
double* WG_val;

pos_typ* pos_list;
pos_typ* akt_item;

LWPntID* pointID;
int akt_point;
IDs_typ* IDs;
double size_change_x, size_change_y, size_change_z;
int morph_map_num;

UV_typ *UVs, *WGs, *MMs, *MNs, *STs;

bool plain_lists;

} // namespace dastrel
