// SPDX-License-Identifier: MIT
// A module whose commands each add to the mesh and then end in a way of their own.
#include <new>
#include <stdexcept>

#include "hostapi/mesh_edit.h"
#include "hostapi/module.h"

namespace {

/// Adds points, a polygon and map values, on new and on old points.
MeshEditOp* add_something(void* local)
{
    MeshEditOp* const edit = reinterpret_cast<MeshEditBegin*>(local)(0, 0, OPSEL_USER);
    if (edit == nullptr)
        return nullptr;
    LWPntID points[3];
    for (int i = 0; i < 3; ++i) {
        const double position[3] = {i * 1.5, i * i * 1.0, -1.0};
        points[i] = edit->addPoint(edit->state, position);
        const float weight = 0.25f;
        edit->pntVMap(edit->state, points[i], LWVMAP_WGHT, "Left behind", 1, &weight);
    }
    edit->addPoly(edit->state, LWPOLTYPE_PTCH, nullptr, "Left behind", 3, points);
    edit->polyScan(
        edit->state,
        [](void* data, const EDPolygonInfo* polygon) {
            auto* const open = static_cast<MeshEditOp*>(data);
            const float weight = 0.75f;
            for (int i = 0; i < polygon->numPnts; ++i)
                open->pntVMap(open->state, polygon->points[i], LWVMAP_WGHT, "Height", 1, &weight);
            return int{EDERR_NONE};
        },
        edit, OPLYR_FG | OPLYR_BG);
    return edit;
}

int out_of_memory(long, GlobalFunc*, void* local, void*)
{
    add_something(local);
    throw std::bad_alloc();
}

int throws(long, GlobalFunc*, void* local, void*)
{
    add_something(local);
    throw std::runtime_error("the left hand did not know");
}

int throws_number(long, GlobalFunc*, void* local, void*)
{
    add_something(local);
    throw 7;
}

int throws_after_done(long, GlobalFunc*, void* local, void*)
{
    MeshEditOp* const edit = add_something(local);
    edit->done(edit->state, EDERR_NONE, 0);
    throw std::bad_alloc();
}

int throws_in_scan(long, GlobalFunc*, void* local, void*)
{
    MeshEditOp* const edit = add_something(local);
    edit->polyScan(
        edit->state, [](void*, const EDPolygonInfo*) -> int { throw std::bad_alloc(); }, nullptr,
        OPLYR_FG);
    return AFUNC_OK;
}

int never_done(long, GlobalFunc*, void* local, void*)
{
    add_something(local);
    return AFUNC_OK;
}

int gives_up(long, GlobalFunc*, void* local, void*)
{
    MeshEditOp* const edit = add_something(local);
    edit->done(edit->state, EDERR_BADARGS, 0);
    return 17;
}

void* start() { return reinterpret_cast<void*>(4); }
void stop(void*) {}

const ServerRecord servers[] = {{"MeshDataEdit", "OutOfMemory", &out_of_memory, nullptr},
                                {"MeshDataEdit", "Throws", &throws, nullptr},
                                {"MeshDataEdit", "ThrowsNumber", &throws_number, nullptr},
                                {"MeshDataEdit", "ThrowsAfterDone", &throws_after_done, nullptr},
                                {"MeshDataEdit", "ThrowsInScan", &throws_in_scan, nullptr},
                                {"MeshDataEdit", "NeverDone", &never_done, nullptr},
                                {"MeshDataEdit", "GivesUp", &gives_up, nullptr},
                                {nullptr, nullptr, nullptr, nullptr}};

} // namespace

extern "C" __attribute__((visibility("default"))) const ModuleDescriptor _mod_descrip = {
    MODULE_SYNC_WORD, MODULE_SYSTEM_VERSION, MODULE_MACHINE_WORD, &start, &stop, servers};
