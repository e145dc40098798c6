// SPDX-License-Identifier: MIT
// A module that is right but for the one thing named when it is built.
#include <stdexcept>
#include <thread>

#include "hostapi/module.h"

#ifndef SYNC_WORD
#define SYNC_WORD MODULE_SYNC_WORD
#endif
#ifndef VERSION_WORD
#define VERSION_WORD MODULE_SYSTEM_VERSION
#endif
#ifndef MACHINE_WORD
#define MACHINE_WORD MODULE_MACHINE_WORD
#endif
#ifndef STARTUP
#define STARTUP start
#endif
#ifndef SHUTDOWN
#define SHUTDOWN stop
#endif
#ifndef SERVERS
#define SERVERS one_server
#endif
#ifndef SYMBOL
#define SYMBOL _mod_descrip
#endif

namespace {

[[maybe_unused]] void* start() { return reinterpret_cast<void*>(4); }
[[maybe_unused]] void* refuse() { return nullptr; }
[[maybe_unused]] void* fail() { throw std::runtime_error("no licence today"); }
/// Leaves a thread running in this module's code.
[[maybe_unused]] void* start_thread()
{
    std::thread([] {
        for (volatile bool go_on = true; go_on;) {
        }
    }).detach();
    return start();
}
[[maybe_unused]] void stop(void*) {}
int activate(long, GlobalFunc*, void*, void*) { return AFUNC_OK; }

const ServerTagInfo tags[] = {{"Menu name", SRVTAG_VALUE(SRVTAG_USERNAME, LANGID_USENGLISH)},
                              {"Nom", SRVTAG_VALUE(SRVTAG_USERNAME, 0x040C)},
                              {"Button", SRVTAG_VALUE(SRVTAG_BUTTONNAME, LANGID_USENGLISH)},
                              {"pol", SRVTAG_VALUE(SRVTAG_ENABLE, 0)},
                              {"passed over", SRVTAG_VALUE(77, 0)},
                              {nullptr, 0}};

[[maybe_unused]] const ServerRecord one_server[] = {{"MeshDataEdit", "Good", &activate, tags},
                                                    {"Other", "Bare", &activate, nullptr},
                                                    {nullptr, nullptr, nullptr, nullptr}};
[[maybe_unused]] const ServerRecord no_server[] = {{nullptr, nullptr, nullptr, nullptr}};
[[maybe_unused]] const ServerRecord null_activation[] = {{"MeshDataEdit", "Good", nullptr, tags},
                                                         {nullptr, nullptr, nullptr, nullptr}};
[[maybe_unused]] const ServerRecord null_name[] = {{"MeshDataEdit", nullptr, &activate, tags},
                                                   {nullptr, nullptr, nullptr, nullptr}};
[[maybe_unused]] const ServerRecord null_class[] = {{nullptr, "Good", &activate, tags},
                                                    {nullptr, nullptr, nullptr, nullptr}};
[[maybe_unused]] const ServerRecord twice[] = {{"MeshDataEdit", "Good", &activate, nullptr},
                                               {"MeshDataEdit", "Good", &activate, nullptr},
                                               {nullptr, nullptr, nullptr, nullptr}};

} // namespace

extern "C" __attribute__((visibility("default")))
const ModuleDescriptor SYMBOL = {SYNC_WORD, VERSION_WORD, MACHINE_WORD, STARTUP, SHUTDOWN, SERVERS};
