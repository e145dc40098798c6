// SPDX-License-Identifier: MIT
/// Progress displays: the host's service "LWM: Dynamic Monitor".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWMONITORFUNCS_GLOBAL "LWM: Dynamic Monitor"

/// One progress display. Every operation takes `data` first, unchanged.
typedef struct LWMonitor {
    void* data; ///< the host's own

    /// Shows the display, at 0 of `total` steps; 0 or less: there is nothing to do.
    void (*init)(void* data, int total);
    /// Advances by `increment` steps. Returns 1 when the user has asked to stop, else 0.
    int (*step)(void* data, int increment);
    /// Ends the display; no other operation may follow.
    void (*done)(void* data);
} LWMonitor;

typedef struct LWMonitorFuncs {
    /// Makes a display with a title and a caption, read during the call. Null when there is none.
    LWMonitor* (*create)(const char* title, const char* caption);
    /// Releases a display that `create` gave.
    void (*destroy)(LWMonitor* monitor);
} LWMonitorFuncs;

#ifdef __cplusplus
}
#endif
