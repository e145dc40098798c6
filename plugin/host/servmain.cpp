// SPDX-License-Identifier: MIT
#include "plugin/host/servmain.h"

namespace dastrel {

namespace {

constexpr ServerTagInfo mk_tags[] = {
    {"Dastrel", SRVTAG_VALUE(SRVTAG_USERNAME, LANGID_USENGLISH)},
    {"Dastrel", SRVTAG_VALUE(SRVTAG_BUTTONNAME, LANGID_USENGLISH)},
    {"pol", SRVTAG_VALUE(SRVTAG_ENABLE, 0)}, // only where there are polygons
    {nullptr, 0}};

} // namespace

const ServerRecord ServerDesc[] = {{"MeshDataEdit", "Dastrel", CloneMake, mk_tags},
                                   {nullptr, nullptr, nullptr, nullptr}};

} // namespace dastrel

const ModuleDescriptor _mod_descrip = {MODULE_SYNC_WORD,    MODULE_SYSTEM_VERSION,
                                       MODULE_MACHINE_WORD, dastrel::Startup,
                                       dastrel::Shutdown,   dastrel::ServerDesc};
