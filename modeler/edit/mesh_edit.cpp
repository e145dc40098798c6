// SPDX-License-Identifier: MIT
#include "modeler/edit/mesh_edit.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "mesh/floats.h"
#include "mesh/normal.h"

namespace modeler {

namespace {

int clamped(std::size_t count) noexcept
{
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(count, most));
}

bool valid_mode(int mode) noexcept { return mode == OPCOUNT_ALL || mode == OPCOUNT_SELECTED; }

/// Copies a value into room for `count` floats; what the value does not fill becomes 0.
void copy_padded(std::span<const float> value, float* room, std::size_t count) noexcept
{
    const std::size_t filled = std::min(count, value.size());
    mesh::copy_floats(value.data(), room, filled);
    for (std::size_t i = filled; i < count; ++i)
        room[i] = 0.0f;
}

std::uint32_t first_foreground(const std::vector<LayerRole>& roles)
{
    const auto found = std::find(roles.begin(), roles.end(), LayerRole::foreground);
    return static_cast<std::uint32_t>(found - roles.begin());
}

} // namespace

MeshEdit::MeshEdit(mesh::Document& document, const std::vector<LayerRole>& roles)
    : document_(document), scope_(document, roles), mark_(document), maps_(document, scope_),
      target_(first_foreground(roles)), target_layer_(&document.layers[target_]),
      old_points_(target_layer_->points.size())
{}

Element MeshEdit::point(LWPntID id) const noexcept
{
    const Element element = from_id(id);
    if (!scope_.sees(element.layer) ||
        element.index >= document_.layers[element.layer].points.size())
        return {};
    return element;
}

Element MeshEdit::polygon(LWPolID id) const noexcept
{
    const Element element = from_id(id);
    if (!scope_.sees(element.layer) ||
        element.index >= document_.layers[element.layer].polygons.size())
        return {};
    return element;
}

std::size_t MeshEdit::selected_points(std::uint32_t layer) const
{
    const mesh::Polygons& polygons = document_.layers[layer].polygons;
    std::vector<bool> selected(mark_.points(layer));
    std::size_t count = 0;
    for (std::size_t i = 0; i < mark_.polygons(layer); ++i) {
        if (!polygons.selected(i))
            continue;
        for (const std::uint32_t p : polygons.points(i)) {
            count += selected[p] ? 0u : 1u;
            selected[p] = true;
        }
    }
    return count;
}

int MeshEdit::point_count(int selector, int mode)
{
    std::size_t count = 0;
    if (!valid_mode(mode))
        return 0;
    try {
        for (const std::uint32_t layer : scope_.layers(selector))
            count += mode == OPCOUNT_ALL || scope_.all_selected(layer) ? mark_.points(layer)
                                                                       : selected_points(layer);
    } catch (const std::bad_alloc&) {
        fail("pointCount");
        return 0;
    }
    return clamped(count);
}

int MeshEdit::polygon_count(int selector, int mode) const
{
    std::size_t count = 0;
    if (!valid_mode(mode))
        return 0;
    for (const std::uint32_t layer : scope_.layers(selector)) {
        const std::size_t all = mark_.polygons(layer);
        if (mode == OPCOUNT_ALL || scope_.all_selected(layer)) {
            count += all;
            continue;
        }
        const mesh::Polygons& polygons = document_.layers[layer].polygons;
        for (std::size_t i = 0; i < all; ++i)
            count += polygons.selected(i) ? 1u : 0u;
    }
    return clamped(count);
}

void MeshEdit::describe(Element polygon, PolygonRecord& record) const
{
    const mesh::Polygons& polygons = document_.layers[polygon.layer].polygons;
    const auto corners = polygons.points(polygon.index);
    record.points.resize(corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        record.points[i] = to_id<LWPntID>({polygon.layer, corners[i]});
    record.info.pol = to_id<LWPolID>(polygon);
    record.info.type = polygons.type(polygon.index);
    record.info.numPnts = clamped(corners.size());
    record.info.points = record.points.data();
    const bool selected = polygons.selected(polygon.index) || scope_.all_selected(polygon.layer);
    record.info.flags = selected ? EDPF_SELECTED : 0;
}

int MeshEdit::scan(EDPolyScanFunc* callback, void* data, int selector)
{
    if (callback == nullptr)
        return EDERR_BADARGS;
    if (!Scope::valid(selector))
        return EDERR_BADLAYER;
    PolygonRecord record; // of this scan alone: a callback may begin another one
    for (const std::uint32_t layer : scope_.layers(selector)) {
        const auto count = static_cast<std::uint32_t>(mark_.polygons(layer));
        for (std::uint32_t i = 0; i < count; ++i) {
            try {
                describe({layer, i}, record);
            } catch (const std::bad_alloc&) {
                fail("polyScan");
                return EDERR_NOMEMORY;
            }
            const int code = callback(data, &record.info);
            if (code != EDERR_NONE)
                return code;
            if (!open_)
                return EDERR_BADARGS;
        }
    }
    return EDERR_NONE;
}

/// The map in the point's layer that is selected, if the point has a value in it.
inline const mesh::VertexMap* MeshEdit::selected_map(Element point) const noexcept
{
    if (selected_ == nullptr)
        return nullptr;
    const std::uint32_t place = selected_->in_layer(point.layer);
    if (place == NamedMap::nowhere)
        return nullptr;
    const mesh::VertexMap& map = document_.layers[point.layer].maps[place];
    return map.has(point.index) ? &map : nullptr;
}

const EDPointInfo* MeshEdit::point_info(LWPntID id)
{
    const Element element = point(id);
    if (!element)
        return nullptr;
    const mesh::Vec3& position = document_.layers[element.layer].points[element.index];
    point_info_.pnt = id;
    point_info_.position[0] = position.x;
    point_info_.position[1] = position.y;
    point_info_.position[2] = position.z;
    point_info_.vmap_value = nullptr;
    if (const mesh::VertexMap* const map = selected_map(element)) {
        // A copy, because writing to maps moves the values. Padded with 0 to what the type has, and
        // never empty: the address tells that there is a value.
        const std::size_t room = std::max({selected_->usual, map->dimension(), std::size_t{1}});
        try {
            if (point_value_.size() < room)
                point_value_.resize(room);
        } catch (const std::bad_alloc&) {
            fail("pointInfo");
            return nullptr;
        }
        copy_padded(map->find(element.index), point_value_.data(), room);
        point_info_.vmap_value = point_value_.data();
    }
    return &point_info_;
}

const EDPolygonInfo* MeshEdit::polygon_info(LWPolID id)
{
    const Element element = polygon(id);
    if (!element)
        return nullptr;
    try {
        describe(element, polygon_info_);
    } catch (const std::bad_alloc&) {
        fail("polyInfo");
        return nullptr;
    }
    return &polygon_info_.info;
}

bool MeshEdit::normal(LWPolID id, double* normal) const
{
    const Element element = polygon(id);
    if (!element || normal == nullptr)
        return false;
    const mesh::Vec3 n = mesh::polygon_normal(document_.layers[element.layer], element.index);
    normal[0] = n.x;
    normal[1] = n.y;
    normal[2] = n.z;
    return true;
}

void* MeshEdit::select_map(void* handle, LWID type, const char* name)
{
    selected_ = nullptr;
    NamedMap* found = nullptr;
    try {
        if (handle != nullptr)
            found = maps_.numbered(reinterpret_cast<std::uintptr_t>(handle) - 1);
        else if (name != nullptr)
            found = &maps_.find(type, name);
    } catch (const std::bad_alloc&) {
        fail("pointVSet");
    }
    if (found == nullptr || found->places.empty())
        return nullptr;
    selected_ = found;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to us, never an address
    return reinterpret_cast<void*>(static_cast<std::uintptr_t>(found->number) + 1);
}

bool MeshEdit::map_value(LWPntID id, float* value) const
{
    const Element element = point(id);
    if (!element || value == nullptr)
        return false;
    const mesh::VertexMap* const map = selected_map(element);
    if (map == nullptr)
        return false;
    copy_padded(map->find(element.index), value,
                selected_->usual != 0 ? selected_->usual : map->dimension());
    return true;
}

int MeshEdit::set_any_map_value(LWPntID id, LWID type, const char* name, int dimension,
                                const float* value)
{
    constexpr int most = std::numeric_limits<std::uint16_t>::max(); // what files can hold
    const Element element = point(id);
    if (!element || name == nullptr || dimension < 0 || dimension > most ||
        (value == nullptr && dimension > 0))
        return EDERR_BADARGS;
    if (failed_in_ != nullptr)
        return EDERR_NOMEMORY;
    try {
        return write_value(element, type, name, {value, static_cast<std::size_t>(dimension)});
    } catch (const std::exception&) {
        fail("pntVMap");
        return EDERR_NOMEMORY;
    }
}

int MeshEdit::write_value(Element point, LWID type, const char* name, std::span<const float> value)
{
    NamedMap& named = maps_.find(type, name);
    std::vector<mesh::VertexMap>& maps = document_.layers[point.layer].maps;
    std::uint32_t place = named.in_layer(point.layer);
    if (place != NamedMap::nowhere && maps[place].dimension() != value.size())
        return EDERR_BADARGS;
    if (place == NamedMap::nowhere) {
        place = static_cast<std::uint32_t>(maps.size());
        maps.emplace_back(type, named.name, value.size());
        named.add_place(point.layer, place);
    }
    if (!named.written) {
        written_.emplace_back(point.layer, place);
        named.written = true;
    }
    if (point.index < mark_.points(point.layer))
        mark_.keep(document_, point.layer, place, point.index);
    maps[place].set(point.index, value);
    return EDERR_NONE;
}

LWPntID MeshEdit::add_point(const double* position)
{
    if (position == nullptr || failed_in_ != nullptr)
        return nullptr;
    mesh::Buffer<mesh::Vec3>& points = document_.layers[target_].points;
    if (points.size() == std::numeric_limits<std::uint32_t>::max()) {
        fail("addPoint");
        return nullptr;
    }
    try {
        points.push_back({position[0], position[1], position[2]});
    } catch (const std::bad_alloc&) {
        fail("addPoint");
        return nullptr;
    }
    return to_id<LWPntID>({target_, static_cast<std::uint32_t>(points.size() - 1)});
}

LWPolID MeshEdit::add_polygon(LWID type, LWPolID pattern, const char* surface, int count,
                              const LWPntID* points)
{
    if (count < 0 || (points == nullptr && count > 0) || failed_in_ != nullptr)
        return nullptr;
    const Element like = polygon(pattern);
    if (pattern != nullptr && !like)
        return nullptr;
    mesh::Polygons& polygons = document_.layers[target_].polygons;
    if (polygons.size() == std::numeric_limits<std::uint32_t>::max()) {
        fail("addPoly");
        return nullptr;
    }
    const mesh::Polygons::Mark before = polygons.mark();
    try {
        corners_.resize(static_cast<std::size_t>(count));
        const std::size_t there = document_.layers[target_].points.size();
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            const std::uint64_t index = index_in(target_, points[i]);
            if (index >= there)
                return nullptr;
            corners_[i] = static_cast<std::uint32_t>(index);
        }
        append_polygon(type, like, surface);
    } catch (const std::exception&) { // memory, or the layer's room for corners and types
        polygons.truncate(before);
        fail("addPoly");
        return nullptr;
    }
    return to_id<LWPolID>({target_, static_cast<std::uint32_t>(polygons.size() - 1)});
}

void MeshEdit::append_polygon(LWID type, Element pattern, const char* surface)
{
    mesh::Polygons& polygons = document_.layers[target_].polygons;
    polygons.add(type, corners_);
    const std::size_t added = polygons.size() - 1;
    if (pattern)
        polygons.copy_attributes(document_.layers[pattern.layer].polygons, pattern.index, added);
    if (surface != nullptr)
        polygons.set_surface(added, document_.tags.intern(surface));
}

void MeshEdit::fail(const char* operation) noexcept
{
    if (failed_in_ == nullptr)
        failed_in_ = operation;
}

std::optional<UndoStep> MeshEdit::keep()
{
    if (!open_)
        return std::nullopt;
    if (failed_in_ != nullptr || !mark_.changed(document_)) {
        drop();
        return std::nullopt;
    }
    open_ = false;
    return std::move(mark_);
}

void MeshEdit::drop() noexcept
{
    if (!open_)
        return;
    mark_.take_back(document_);
    open_ = false;
}

} // namespace modeler
