// SPDX-License-Identifier: MIT
/// The module's face towards the host.
#pragma once

#include "hostapi/module.h"

namespace dastrel {

/// Called once after the module was loaded; gives a token that is not null.
void* Startup();

/// Called once before the module is unloaded.
void Shutdown(void* token);

/// Runs the command once: checks the layers, shows the panel, scatters the clones.
/// AFUNC_BADLOCAL when there is no mesh to edit, else AFUNC_OK: refusals, too, which are shown to
/// the user, and a cancelled panel. Memory that cannot be had comes out as std::bad_alloc, with
/// everything released and the edit not finished.
int CloneMake(long version, GlobalFunc* global, void* local, void* server_data);

/// The commands of this module, ended by a record of nulls.
extern const ServerRecord ServerDesc[];

} // namespace dastrel

/// What a host looks for in the module file: its one exported symbol.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the host's
MODULE_EXPORT const ModuleDescriptor _mod_descrip;
