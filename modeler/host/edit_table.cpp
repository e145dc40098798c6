// SPDX-License-Identifier: MIT
#include "modeler/host/edit_table.h"

#include "modeler/host/activation.h"

namespace modeler {

namespace {

/// The edit that was begun last on this thread, as long as it is there.
thread_local MeshEdit* last_edit = nullptr;

/// The edit that `state` stands for, if it is the open one; null for anything else, so that a call
/// after the end, or with another state, finds nothing to work on.
MeshEdit* open_edit(void* state) noexcept
{
    MeshEdit* const edit = last_edit;
    return edit != nullptr && edit == state && edit->open() ? edit : nullptr;
}

void done(void* state, int error, int) noexcept
{
    if (open_edit(state) == nullptr)
        return;
    Activation* const activation = Activation::current();
    (void)activation->shield(0, [&] {
        activation->end_edit(error == EDERR_NONE);
        return 0;
    });
}

int point_count(void* state, int layer, int mode) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->point_count(layer, mode) : 0;
}

int polygon_count(void* state, int layer, int mode) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->polygon_count(layer, mode) : 0;
}

// Not noexcept: what the module's own callback throws passes through to the module.
int scan(void* state, EDPolyScanFunc* callback, void* data, int layer)
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->scan(callback, data, layer) : EDERR_BADARGS;
}

const EDPointInfo* point_info(void* state, LWPntID point) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->point_info(point) : nullptr;
}

const EDPolygonInfo* polygon_info(void* state, LWPolID polygon) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->polygon_info(polygon) : nullptr;
}

int normal(void* state, LWPolID polygon, double result[3]) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr && edit->normal(polygon, result) ? 1 : 0;
}

void* select_map(void* state, void* map, LWID type, const char* name) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->select_map(map, type, name) : nullptr;
}

int map_value(void* state, LWPntID point, float* value) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr && edit->map_value(point, value) ? 1 : 0;
}

int set_map_value(void* state, LWPntID point, LWID type, const char* name, int dimension,
                  const float* value) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->set_map_value(point, type, name, dimension, value)
                           : EDERR_BADARGS;
}

LWPntID add_point(void* state, const double position[3]) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->add_point(position) : nullptr;
}

LWPolID add_polygon(void* state, LWID type, LWPolID pattern, const char* surface, int count,
                    const LWPntID* points) noexcept
{
    MeshEdit* const edit = open_edit(state);
    return edit != nullptr ? edit->add_polygon(type, pattern, surface, count, points) : nullptr;
}

} // namespace

EditTable::EditTable(mesh::Document& document, const std::vector<LayerRole>& roles,
                     const LastingTexts& texts)
    : edit_(document, roles, texts), operations_{}
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
    last_edit = &edit_;
}

EditTable::~EditTable()
{
    if (last_edit == &edit_)
        last_edit = nullptr;
}

} // namespace modeler
