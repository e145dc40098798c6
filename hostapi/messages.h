// SPDX-License-Identifier: MIT
/// Message boxes: the host's service "Info Messages 3".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWMESSAGEFUNCS_GLOBAL "Info Messages 3"

/// Each call shows one modal box and returns when the user has closed it. The texts are read
/// during the call; a second line may be null.
typedef struct LWMessageFuncs {
    void (*info)(const char* line1, const char* line2);
    void (*error)(const char* line1, const char* line2);
    /// Asks a question. Returns 1 for yes and 0 for no.
    int (*yesNo)(const char* title, const char* line1, const char* line2);
} LWMessageFuncs;

#ifdef __cplusplus
}
#endif
