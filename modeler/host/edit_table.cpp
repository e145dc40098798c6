// SPDX-License-Identifier: MIT
#include "modeler/host/edit_table.h"

#include "modeler/host/activation.h"

namespace modeler {

namespace {

/// A unique address used as the state of no edit.
constexpr char no_edit = 0;

/// The state of the edit that is open on this thread, or the address of the sentinel above.
thread_local const void* open_state = &no_edit;

/// Whether `state` belongs to the edit that is open on this thread.
bool is_open(const void* state) noexcept { return state == open_state; }

MeshEdit& edit_of(void* state) noexcept { return *static_cast<MeshEdit*>(state); }

void done(void* state, int error, int) noexcept
{
    if (!is_open(state))
        return;
    Activation* const activation = Activation::current();
    (void)activation->guarded(0, [&] {
        activation->end_edit(error);
        return 0;
    });
}

int point_count(void* state, int layer, int mode) noexcept
{
    return is_open(state) ? edit_of(state).point_count(layer, mode) : 0;
}

int polygon_count(void* state, int layer, int mode) noexcept
{
    return is_open(state) ? edit_of(state).polygon_count(layer, mode) : 0;
}

// Not noexcept: exceptions of the module's callback propagate to the module.
int scan(void* state, EDPolyScanFunc* callback, void* data, int layer)
{
    return is_open(state) ? edit_of(state).scan(callback, data, layer) : EDERR_BADARGS;
}

const EDPointInfo* point_info(void* state, LWPntID point) noexcept
{
    return is_open(state) ? edit_of(state).point_info(point) : nullptr;
}

const EDPolygonInfo* polygon_info(void* state, LWPolID polygon) noexcept
{
    return is_open(state) ? edit_of(state).polygon_info(polygon) : nullptr;
}

int normal(void* state, LWPolID polygon, double result[3]) noexcept
{
    return is_open(state) && edit_of(state).normal(polygon, result) ? 1 : 0;
}

void* select_map(void* state, void* map, LWID type, const char* name) noexcept
{
    return is_open(state) ? edit_of(state).select_map(map, type, name) : nullptr;
}

int map_value(void* state, LWPntID point, float* value) noexcept
{
    return is_open(state) && edit_of(state).map_value(point, value) ? 1 : 0;
}

int set_map_value(void* state, LWPntID point, LWID type, const char* name, int dimension,
                  const float* value) noexcept
{
    return is_open(state) ? edit_of(state).set_map_value(point, type, name, dimension, value)
                          : EDERR_BADARGS;
}

LWPntID add_point(void* state, const double position[3]) noexcept
{
    return is_open(state) ? edit_of(state).add_point(position) : nullptr;
}

LWPolID add_polygon(void* state, LWID type, LWPolID pattern, const char* surface, int count,
                    const LWPntID* points) noexcept
{
    return is_open(state) ? edit_of(state).add_polygon(type, pattern, surface, count, points)
                          : nullptr;
}

} // namespace

EditTable::EditTable(mesh::Document& document, const std::vector<LayerRole>& roles,
                     MeshEdit::Target target, const StringPool& strings)
    : edit_(document, roles, target, strings), operations_{}
{
    operations_.state = &edit_;
    operations_.done = &done;
    operations_.pointCount = &point_count;
    operations_.polyCount = &polygon_count;
    operations_.polyScan = &scan;
    operations_.pointInfo = &point_info;
    operations_.polyInfo = &polygon_info;
    operations_.polyNormal = &normal;
    operations_.pointVSet = &select_map;
    operations_.pointVGet = &map_value;
    operations_.pntVMap = &set_map_value;
    operations_.addPoint = &add_point;
    operations_.addPoly = &add_polygon;
    open_state = operations_.state;
}

EditTable::~EditTable() { close(); }

std::optional<UndoStep> EditTable::end(bool keep)
{
    close();
    if (keep)
        return edit_.commit();
    edit_.rollback();
    return std::nullopt;
}

void EditTable::close() noexcept
{
    if (open_state == operations_.state)
        open_state = &no_edit;
}

} // namespace modeler
