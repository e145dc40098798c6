// SPDX-License-Identifier: MIT
/// What the test program gives to the module "script": the module has no mind of its own, each run
/// calls back into the test that loaded it.
#pragma once

#include "hostapi/module.h"

extern "C" {

/// Called by the module as its activation function; what it throws comes out of the module.
int script_activate(long version, GlobalFunc* global, void* local, void* server_data);

/// Called when the module is started and when it is shut down, with the token it was given.
void script_event(const char* what, void* token);
}
