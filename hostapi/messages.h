// SPDX-License-Identifier: MIT
/// Message boxes: the host's service "Info Messages 3".
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWMESSAGEFUNCS_GLOBAL "Info Messages 3"

/// Each call shows one modal box and returns when the user has closed it; a host without a screen
/// writes a line instead. [run] The texts are UTF-8 without markup, read during the call; a second
/// line may be null. The table is the host's; no entry is null.
typedef struct LWMessageFuncs {
    /// Tells what is good to know.
    void (*info)(const char* line1, const char* line2);
    /// Tells that the command will not, or cannot, do what was asked. A host may count a run that
    /// called this as refused, and drop the result.
    void (*error)(const char* line1, const char* line2);
    /// Asks a question. Returns 1 for yes and 0 for no; a host with nobody to ask answers 0.
    int (*yesNo)(const char* title, const char* line1, const char* line2);
} LWMessageFuncs;

#ifdef __cplusplus
}
#endif
