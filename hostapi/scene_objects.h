// SPDX-License-Identifier: MIT
/// What the scene's objects hold: the host's service "Scene Objects 7".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWOBJECTFUNCS_GLOBAL "Scene Objects 7"

typedef struct LWObjectFuncs {
    /// Number of vertex maps of `type`. Maps of one type and name in several layers count once.
    int (*numVMaps)(LWID type);

    /// Name of the map at `index` (from 0) of `type`, in order of first appearance. The text is
    /// the host's and stays valid until the activation function returns. Null past the last map.
    const char* (*vmapName)(LWID type, int index);
} LWObjectFuncs;

#ifdef __cplusplus
}
#endif
