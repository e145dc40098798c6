// SPDX-License-Identifier: MIT
/// Progress displays: the host's service "LWM: Dynamic Monitor".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWMONITORFUNCS_GLOBAL "LWM: Dynamic Monitor"

/// One progress display: `create`, `init`, any number of `step`, `done`, `destroy`, in this order.
/// Every operation takes `data` first, unchanged. The record is the host's, and valid until
/// `destroy` or until the activation function returns, whichever comes first. No entry is null.
typedef struct LWMonitor {
    void* data; ///< the host's own

    /// Shows the display, at 0 of `total` steps; 0 or less: there is nothing to do. [run, once]
    void (*init)(void* data, int total);
    /// Advances by `increment` steps, 0 or more. [run, between `init` and `done`]
    /// Returns 1 when the user has asked to stop, else 0. What stopping means is the module's
    /// business: it may end its edit with an error, or keep what it has.
    /// Cheap enough to be called for every element; the host may draw and handle the user's input
    /// in it, but changes no mesh.
    int (*step)(void* data, int increment);
    /// Ends the display; no other operation but `destroy` may follow. [run, once]
    void (*done)(void* data);
} LWMonitor;

/// The table is the host's; no entry is null.
typedef struct LWMonitorFuncs {
    /// Makes a display with a title and a caption, UTF-8, read during the call. [run]
    /// Null when the host shows none: the module then works without.
    LWMonitor* (*create)(const char* title, const char* caption);
    /// Releases a display that `create` gave. [run, once for each] Null is no display.
    void (*destroy)(LWMonitor* monitor);
} LWMonitorFuncs;

#ifdef __cplusplus
}
#endif
