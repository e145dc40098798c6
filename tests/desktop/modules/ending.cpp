// SPDX-License-Identifier: MIT
// A module whose commands end the program in several ways, never end, or do nothing.
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>

#include <unistd.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/module.h"

namespace {

int add_point(void* local)
{
    MeshEditOp* const edit = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
    if (edit == nullptr)
        return AFUNC_OK;
    const double position[3] = {1.0, 2.0, 3.0};
    edit->addPoint(edit->state, position);
    edit->done(edit->state, EDERR_NONE, 0);
    return AFUNC_OK;
}

int adds(long, GlobalFunc*, void* local, void*) { return add_point(local); }

int loops(long, GlobalFunc*, void* local, void*)
{
    add_point(local);
    const char* const folder = std::getenv("XDG_STATE_HOME");
    std::ofstream(std::string(folder != nullptr ? folder : ".") + "/looping");
    for (;;)
        ::pause();
}

int crashes(long, GlobalFunc*, void* local, void*)
{
    add_point(local);
    (void)std::signal(SIGSEGV, SIG_DFL); // a sanitizer's handler would report it
    (void)std::raise(SIGSEGV);
    return AFUNC_OK;
}

int exits(long, GlobalFunc*, void* local, void*)
{
    add_point(local);
    std::exit(0);
}

int does_nothing(long, GlobalFunc*, void*, void*) { return AFUNC_OK; }

void* start() { return reinterpret_cast<void*>(4); }
void stop(void*) {}

const ServerRecord servers[] = {{"MeshDataEdit", "Adds", &adds, nullptr},
                                {"MeshDataEdit", "Loops", &loops, nullptr},
                                {"MeshDataEdit", "Crashes", &crashes, nullptr},
                                {"MeshDataEdit", "Exits", &exits, nullptr},
                                {"MeshDataEdit", "Nothing", &does_nothing, nullptr},
                                {nullptr, nullptr, nullptr, nullptr}};

} // namespace

extern "C" __attribute__((visibility("default"))) const ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, &start, &stop, servers};
