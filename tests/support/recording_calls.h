// SPDX-License-Identifier: MIT
/// The functions behind the tables of the recording host; for its own sources only.
#pragma once

#include "tests/support/recording_host.h"

namespace support {

/// The host that is there now.
[[nodiscard]] RecordingHost& host();

/// The mesh edit.
struct EditCalls {
    static void fill(MeshEditOp& table, RecordingHost* owner);

    static RecordingHost& at(void* state, const char* call);
    static void done(void* state, int error, int selection_mode);
    static int pointCount(void* state, int layer, int mode);
    static int polyCount(void* state, int layer, int mode);
    static int polyScan(void* state, EDPolyScanFunc* callback, void* data, int layer);
    static const EDPointInfo* pointInfo(void* state, LWPntID point);
    static const EDPolygonInfo* polyInfo(void* state, LWPolID polygon);
    static int polyNormal(void* state, LWPolID polygon, double normal[3]);
    static void* pointVSet(void* state, void* map, LWID type, const char* name);
    static int pointVGet(void* state, LWPntID point, float* value);
    static int pntVMap(void* state, LWPntID point, LWID type, const char* name, int dimension,
                       const float* value);
    static LWPntID addPoint(void* state, const double position[3]);
    static LWPolID addPoly(void* state, LWID type, LWPolID template_polygon, const char* surface,
                           int count, const LWPntID* points);
};

/// The panel service.
struct PanelCalls {
    static void fill(LWXPanelFuncs& table);

    static LWXPanelID create(int type, const LWXPanelControl* controls);
    static void describe(LWXPanelID panel, const LWXPanelDataDesc* data, LWXPanelGetFunc* get,
                         LWXPanelSetFunc* set);
    static void hint(LWXPanelID panel, LWXPanelControlID id, const LWXPanelHint* hints);
    static void* formGet(LWXPanelID panel, LWXPanelControlID control);
    static void formSet(LWXPanelID panel, LWXPanelControlID control, const void* value);
    static int post(LWXPanelID panel);
    static void destroy(LWXPanelID panel);
};

/// The lookup, the messages, the objects, the monitors, and the beginning of an edit.
struct ServiceCalls {
    static void fill(RecordingHost& owner);

    static void* global(const char* service, int use_mode);
    static MeshEditOp* begin(int point_buffer, int polygon_buffer, int selection_mode);
    static void info(const char* line1, const char* line2);
    static void error(const char* line1, const char* line2);
    static int yesNo(const char* title, const char* line1, const char* line2);
    static int numVMaps(LWID type);
    static const char* vmapName(LWID type, int index);
    static LWMonitor* create_monitor(const char* title, const char* caption);
    static void destroy_monitor(LWMonitor* monitor);
    static void init(void* data, int total);
    static int step(void* data, int increment);
    static void done(void* data);
};

} // namespace support
