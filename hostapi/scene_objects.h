// SPDX-License-Identifier: MIT
/// What the scene's objects hold: the host's service "Scene Objects 7".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWOBJECTFUNCS_GLOBAL "Scene Objects 7"

/// What the foreground and background layers hold when it is asked for; what an open edit has added
/// is not among it. The table is the host's; no entry is null.
typedef struct LWObjectFuncs {
    /// Number of vertex maps of `type`, 0 or more. [run]
    /// Maps of one type and name in several layers count once.
    int (*numVMaps)(LWID type);

    /// Name of the map at `index` (from 0) of `type`, in order of first appearance. [run]
    /// The text is the host's and stays valid until the activation function returns. Null for an
    /// index below 0 or past the last map.
    const char* (*vmapName)(LWID type, int index);
} LWObjectFuncs;

#ifdef __cplusplus
}
#endif
