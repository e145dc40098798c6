// SPDX-License-Identifier: MIT
// A real loadable module whose command is a function of the test program.
#include "tests/modeler/modules/script.h"

namespace {

int token_of_life;

void* start()
{
    script_event("startup", &token_of_life);
    return &token_of_life;
}

void stop(void* token) { script_event("shutdown", token); }

const ServerTagInfo tags[] = {{"pol", SRVTAG_VALUE(SRVTAG_ENABLE, 0)}, {nullptr, 0}};
const ServerTagInfo odd_tags[] = {{"moon", SRVTAG_VALUE(SRVTAG_ENABLE, 0)}, {nullptr, 0}};
const ServerRecord servers[] = {{"MeshDataEdit", "Script", &script_activate, tags},
                                {"MeshDataEdit", "Odd", &script_activate, odd_tags},
                                {nullptr, nullptr, nullptr, nullptr}};

} // namespace

extern "C" __attribute__((visibility("default"))) const ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, &start, &stop, servers};
