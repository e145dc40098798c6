// SPDX-License-Identifier: MIT
// The smallest host: loads a module, runs its first command on one quad, and prints the mesh. Its
// only service is the messages; there are no maps and no background layers.
#include <cstdio>
#include <cstring>
#include <vector>

#include <dlfcn.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/module.h"

namespace {

std::vector<EDPointInfo> points;
std::vector<std::vector<LWPntID>> polygons;
constexpr std::size_t old_points = 4, old_polygons = 1; // the quad, which was there before

// Ids are numbers: the index and one, so that none is null.
template <typename Id> Id id(std::size_t index) { return reinterpret_cast<Id>(index + 1); }
template <typename Id> std::size_t index(Id id) { return reinterpret_cast<std::size_t>(id) - 1; }

LWPntID add_point(void*, const double at[3])
{
    points.push_back({id<LWPntID>(points.size()), {at[0], at[1], at[2]}, nullptr});
    return points.back().pnt;
}
LWPolID add_polygon(void*, LWID, LWPolID, const char*, int count, const LWPntID* corners)
{
    polygons.emplace_back(corners, corners + count);
    return id<LWPolID>(polygons.size() - 1);
}
const EDPointInfo* point_info(void*, LWPntID point)
{
    return index(point) < points.size() ? &points[index(point)] : nullptr;
}
const EDPolygonInfo* polygon_info(void*, LWPolID polygon)
{
    static EDPolygonInfo info; // valid until the next call
    if (index(polygon) >= polygons.size())
        return nullptr;
    const std::vector<LWPntID>& corners = polygons[index(polygon)];
    info = {polygon, LWPOLTYPE_FACE, int(corners.size()), corners.data(), EDPF_SELECTED};
    return &info;
}
int point_count(void*, int layer, int) { return layer & OPLYR_FG ? int(old_points) : 0; }
int polygon_count(void*, int layer, int) { return layer & OPLYR_FG ? int(old_polygons) : 0; }
int scan(void* state, EDPolyScanFunc* callback, void* data, int layer)
{
    return layer & OPLYR_FG ? callback(data, polygon_info(state, id<LWPolID>(0))) : EDERR_NONE;
}
int normal(void*, LWPolID, double n[3]) { return n[0] = n[2] = 0, n[1] = 1, 1; } // all lie flat
void* select_map(void*, void*, LWID, const char*) { return nullptr; }
int map_value(void*, LWPntID, float*) { return 0; }
int set_map(void*, LWPntID, LWID, const char*, int, const float*) { return EDERR_NOMEMORY; }
void done(void*, int error, int)
{
    points.resize(error == EDERR_NONE ? points.size() : old_points);
    polygons.resize(error == EDERR_NONE ? polygons.size() : old_polygons);
}
MeshEditOp edit = {nullptr,    done,         point_count, polygon_count, scan,
                   point_info, polygon_info, normal,      select_map,    map_value,
                   set_map,    add_point,    add_polygon};
MeshEditOp* begin(int, int, int) { return &edit; }

void show(const char* line1, const char*) { std::puts(line1); }
int ask(const char*, const char*, const char*) { return 0; }
LWMessageFuncs messages = {show, show, ask};
void* service(const char* name, int)
{
    return std::strcmp(name, LWMESSAGEFUNCS_GLOBAL) ? nullptr : &messages;
}

} // namespace

int main(int count, char** arguments)
{
    void* const file = count == 2 ? dlopen(arguments[1], RTLD_NOW) : nullptr;
    void* const symbol = file != nullptr ? dlsym(file, MODULE_DESCRIPTOR_SYMBOL) : nullptr;
    const auto* const module = static_cast<const ModuleDescriptor*>(symbol);
    if (module == nullptr || module->sync_word != MODULE_SYNC_WORD ||
        module->system_version != MODULE_SYSTEM_VERSION)
        return std::puts("usage: smallest_host ./MODULE.p"), 2;
    void* const token = module->startup();
    if (token == nullptr)
        return std::puts("the module cannot work here"), 1;
    const double corners[4][3] = {{0, 0, 0}, {0, 0, 1}, {1, 0, 1}, {1, 0, 0}};
    polygons.emplace_back();
    for (const auto& corner : corners)
        polygons[0].push_back(add_point(nullptr, corner));
    const int code = module->servers->activate(1, service, reinterpret_cast<void*>(begin), nullptr);
    for (const EDPointInfo& p : points)
        std::printf("point %g %g %g\n", p.position[0], p.position[1], p.position[2]);
    for (const auto& polygon : polygons)
        std::printf("polygon of %zu points from %zu\n", polygon.size(), index(polygon[0]));
    module->shutdown(token);
    return dlclose(file) != 0 || code != AFUNC_OK;
}
