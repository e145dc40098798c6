// SPDX-License-Identifier: MIT
/// Sizes and places of the records that cross the boundary, as the including language lays them
/// out.
#pragma once

#include <stddef.h>

enum { LAYOUT_COUNT = 22 };

// A macro, because the same lines are to be compiled as C and as C++.
#define LAYOUT_FUNCTION(name)                                                     \
    void name(size_t layout[LAYOUT_COUNT]);                                       \
    void name(size_t layout[LAYOUT_COUNT])                                        \
    {                                                                             \
        const size_t values[LAYOUT_COUNT] = {sizeof(ModuleDescriptor),            \
                                             offsetof(ModuleDescriptor, servers), \
                                             sizeof(ServerRecord),                \
                                             offsetof(ServerRecord, tags),        \
                                             sizeof(ServerTagInfo),               \
                                             sizeof(EDPolygonInfo),               \
                                             offsetof(EDPolygonInfo, points),     \
                                             offsetof(EDPolygonInfo, flags),      \
                                             sizeof(EDPointInfo),                 \
                                             offsetof(EDPointInfo, position),     \
                                             offsetof(EDPointInfo, vmap_value),   \
                                             sizeof(MeshEditOp),                  \
                                             offsetof(MeshEditOp, addPoly),       \
                                             sizeof(LWMessageFuncs),              \
                                             sizeof(LWObjectFuncs),               \
                                             sizeof(LWMonitor),                   \
                                             sizeof(LWMonitorFuncs),              \
                                             sizeof(LWXPanelFuncs),               \
                                             sizeof(LWXPanelControl),             \
                                             sizeof(LWXPanelDataDesc),            \
                                             sizeof(LWXPanelHint),                \
                                             offsetof(LWXPanelHint, button)};     \
        for (int i = 0; i < LAYOUT_COUNT; ++i)                                    \
            layout[i] = values[i];                                                \
    }
