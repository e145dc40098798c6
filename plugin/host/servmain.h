// SPDX-License-Identifier: MIT
/// The module's interface to the host.
#pragma once

#include "hostapi/module.h"

namespace dastrel {

/// Called once after the module is loaded; returns a token that is not null.
void* Startup();

/// Called once before the module is unloaded.
void Shutdown(void* token);

/// Runs the command once: checks the layers, shows the panel, scatters the clones.
/// Returns AFUNC_BADLOCAL when there is no mesh to edit, else AFUNC_OK, also after a refusal, which
/// is shown to the user, and a cancelled panel. Throws std::bad_alloc when out of memory, with
/// everything released and the edit not finished.
int CloneMake(long version, GlobalFunc* global, void* local, void* server_data);

/// The commands of this module, terminated by a record of nulls.
extern const ServerRecord ServerDesc[];

} // namespace dastrel

/// What a host looks for in the module file: its one exported symbol.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name is the host's
MODULE_EXPORT const ModuleDescriptor _mod_descrip;
