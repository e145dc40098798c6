// SPDX-License-Identifier: MIT
// A module with as many servers as DASTREL_BENCH_COUNT says, whose command makes as many maps.
#include <cstdlib>
#include <string>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "hostapi/module.h"

namespace {

std::size_t wanted()
{
    const char* const set = std::getenv("DASTREL_BENCH_COUNT");
    return set != nullptr ? std::strtoul(set, nullptr, 10) : 1;
}

int make_maps(long, GlobalFunc*, void* local, void*)
{
    MeshEditOp* const edit = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
    const double position[3] = {0, 0, 0};
    const LWPntID point = edit->addPoint(edit->state, position);
    const float value = 1.0F;
    const std::size_t count = wanted();
    for (std::size_t i = 0; i < count; ++i)
        edit->pntVMap(edit->state, point, LWVMAP_WGHT, std::to_string(i).c_str(), 1, &value);
    edit->done(edit->state, EDERR_NONE, 0);
    return AFUNC_OK;
}

void* start() { return reinterpret_cast<void*>(4); }
void stop(void*) {}

std::vector<std::string> names;
std::vector<ServerRecord> servers;

} // namespace

extern "C" {
__attribute__((visibility("default"))) ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, &start, &stop, nullptr};
}

namespace {

const struct Filling {
    Filling()
    {
        const std::size_t count = wanted();
        names.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            names.push_back("Maps" + std::to_string(i));
        for (const std::string& name : names)
            servers.push_back({"MeshDataEdit", name.c_str(), &make_maps, nullptr});
        servers.push_back({nullptr, nullptr, nullptr, nullptr});
        _mod_descrip.servers = servers.data();
    }
} filling;

} // namespace
