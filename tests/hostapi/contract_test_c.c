// SPDX-License-Identifier: MIT
// The contract as a module written in C sees it: sizes and places for contract_test.cpp.
#include <stddef.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/module.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"
#include "tests/hostapi/layout.h"

LAYOUT_FUNCTION(layout_in_c)
