// SPDX-License-Identifier: MIT
#include "modeler/edit/mesh_edit.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "mesh/normal.h"

namespace modeler {

namespace {

int clamped(std::size_t count) noexcept
{
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(count, most));
}

/// Whether a file can store the type: four printable characters.
bool is_printable(LWID type) noexcept
{
    for (int shift = 0; shift < 32; shift += 8) {
        const unsigned character = (type >> shift) & 0xFFu;
        if (character < 0x20 || character > 0x7E)
            return false;
    }
    return true;
}

/// Floats of the longest of the types whose length is known.
constexpr std::size_t longest_usual_value = 3;

bool valid_mode(int mode) noexcept { return mode == OPCOUNT_ALL || mode == OPCOUNT_SELECTED; }

bool is_empty(const mesh::Layer& layer) noexcept
{
    return layer.points.size() == 0 && layer.polygons.size() == 0 && layer.maps.empty();
}

} // namespace

MeshEdit::MeshEdit(mesh::Document& document, const std::vector<LayerRole>& roles, Target target,
                   const StringPool& strings)
    : document_(document), scope_(document, roles), mark_(document, target.is_new ? 1 : 0),
      maps_(document, scope_, strings), target_(target.layer), target_ids_(target_),
      target_layer_(&document.layers[target_]), seen_(document.layers.size()),
      fallback_(target.fallback), is_wanted_(target.is_wanted), info_ids_(target_),
      info_layer_(target_layer_), point_value_(longest_usual_value)
{
    for (const std::uint32_t i : scope_.layers(OPLYR_FG | OPLYR_BG)) {
        seen_[i] = &document.layers[i];
        for (const mesh::VertexMap& map : document.layers[i].maps)
            reserve_value(map.dimension());
    }
}

void MeshEdit::reserve_value(std::size_t dimension)
{
    if (dimension > point_value_.size())
        point_value_.resize(dimension);
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

int MeshEdit::scan(EDPolyScanFunc* callback, void* data, int selector)
{
    if (callback == nullptr)
        return EDERR_BADARGS;
    if (!Scope::valid(selector))
        return EDERR_BADLAYER;
    PolygonRecord record; // local, since the callback may start a nested scan
    for (const std::uint32_t layer : scope_.layers(selector)) {
        const mesh::Polygons& polygons = document_.layers[layer].polygons;
        const LayerIds ids(layer);
        const bool all_selected = scope_.all_selected(layer);
        const auto count = static_cast<std::uint32_t>(mark_.polygons(layer));
        for (std::uint32_t i = 0; i < count; ++i) {
            const EDPolygonInfo* polygon = nullptr;
            try {
                polygon = &record.describe(polygons, ids, i, all_selected);
            } catch (const std::bad_alloc&) {
                fail("polyScan");
                return EDERR_NOMEMORY;
            }
            const int code = callback(data, polygon);
            if (code != EDERR_NONE)
                return code;
            if (!open_)
                return EDERR_BADARGS;
        }
    }
    return EDERR_NONE;
}

const EDPolygonInfo* MeshEdit::polygon_info(LWPolID id)
{
    const Element element = from_id(id);
    const mesh::Layer* const layer = layer_of_polygon(element);
    if (layer == nullptr)
        return nullptr;
    try {
        return &polygon_info_.describe(layer->polygons, LayerIds(element.layer), element.index,
                                       scope_.all_selected(element.layer));
    } catch (const std::bad_alloc&) {
        fail("polyInfo");
        return nullptr;
    }
}

bool MeshEdit::normal(LWPolID id, double* normal) const
{
    const Element element = from_id(id);
    const mesh::Layer* const layer = layer_of_polygon(element);
    if (layer == nullptr || normal == nullptr)
        return false;
    const mesh::Vec3 n = mesh::polygon_normal(*layer, element.index);
    normal[0] = n.x;
    normal[1] = n.y;
    normal[2] = n.z;
    return true;
}

void* MeshEdit::select_map_slow(void* handle, LWID type, const char* name)
{
    if (handle != nullptr)
        return select(maps_.by_number(reinterpret_cast<std::uintptr_t>(handle) - 1));
    if (name == nullptr)
        return select(nullptr);
    try {
        return select(&maps_.find(type, name));
    } catch (const std::bad_alloc&) {
        fail("pointVSet");
        return select(nullptr);
    }
}

const EDPointInfo* MeshEdit::point_info_slow(LWPntID id)
{
    const Element element = from_id(id);
    const mesh::Layer* const layer = layer_of_point(element);
    if (layer == nullptr)
        return nullptr;
    info_ids_ = LayerIds(element.layer);
    info_layer_ = layer;
    return point_info(id);
}

bool MeshEdit::map_value_slow(Element point, float* value)
{
    // Layers that are not visible to the edit have no maps in the index, and points that do not
    // exist have no values.
    const NamedMap::Place* const place = selected_->in_layer(point.layer);
    if (place == nullptr || !place->values->has(point.index))
        return false;
    const mesh::VertexMap* const map = place->values;
    if (map->dimension() == selected_->caller_dimension) {
        selected_->read_ids = LayerIds(point.layer);
        selected_->read_map = map;
    }
    const std::span<const float> stored = map->find(point.index);
    const std::size_t wanted =
        selected_->caller_dimension != 0 ? selected_->caller_dimension : stored.size();
    const std::size_t there = std::min(wanted, stored.size());
    std::copy_n(stored.begin(), there, value);
    std::fill(value + there, value + wanted, 0.0f); // what the map has less than its type
    return true;
}

int MeshEdit::set_map_value_slow(LWPntID id, LWID type, const char* name, int dimension,
                                 const float* value)
{
    constexpr int most = std::numeric_limits<std::uint16_t>::max(); // what files can hold
    const Element element = from_id(id);
    if (layer_of_point(element) == nullptr || name == nullptr || dimension < 0 ||
        dimension > most || (value == nullptr && dimension > 0))
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
    // A new point, and a map that already has values of new points: nothing to save for undo.
    if (named.target != nullptr && named.target->dimension() == value.size() &&
        point.layer == target_ && point.index >= mark_.points(target_)) {
        named.target->set(point.index, value);
        return EDERR_NONE;
    }
    const NamedMap::Place* place = named.in_layer(point.layer);
    if (place == nullptr) {
        reserve_value(value.size());
        auto& maps = document_.layers[point.layer].maps;
        const auto number = static_cast<std::uint32_t>(maps.size());
        named.places.reserve(named.places.size() + 1); // what can fail comes before the map
        maps.emplace_back(type, named.name, value.size());
        named.add({point.layer, number, &maps.back()});
        place = named.in_layer(point.layer);
    }
    if (place->values->dimension() != value.size())
        return EDERR_BADARGS;
    if (!named.written) {
        written_.emplace_back(point.layer, place->map);
        named.written = true;
    }
    if (point.index < mark_.points(point.layer))
        mark_.save_value(document_, point.layer, place->map, point.index);
    else
        named.target = place->values;
    place->values->set(point.index, value);
    return EDERR_NONE;
}

LWPntID MeshEdit::add_point_slow(const double* position)
{
    if (position == nullptr || failed_in_ != nullptr)
        return nullptr;
    resolve_target();
    mesh::Buffer<mesh::Vec3>& points = target_layer_->points;
    const std::size_t index = points.size();
    try {
        if (index >= most_elements)
            throw std::length_error("a layer holds more than 4,294,967,295 points");
        points.push_back({position[0], position[1], position[2]});
    } catch (const std::exception&) {
        fail("addPoint");
        return nullptr;
    }
    return target_ids_.id<LWPntID>(index);
}

LWPolID MeshEdit::add_polygon_slow(LWID type, LWPolID pattern, const char* surface, int count,
                                   const LWPntID* points)
{
    if (count < 0 || (points == nullptr && count > 0) || failed_in_ != nullptr)
        return nullptr;
    const Element like = from_id(pattern);
    const mesh::Layer* const like_layer = layer_of_polygon(like);
    if (pattern != nullptr && like_layer == nullptr)
        return nullptr;
    // A type of an existing polygon may be copied, even if it is not printable.
    if (!is_printable(type) &&
        (like_layer == nullptr || like_layer->polygons.type(like.index) != type)) {
        refused_type_ = type;
        fail("addPoly");
        return nullptr;
    }
    resolve_target();
    const auto corners = static_cast<std::size_t>(count);
    mesh::Polygons& polygons = target_layer_->polygons;
    const std::size_t added = polygons.size();
    try {
        if (added >= most_elements)
            throw std::length_error("a layer holds more than 4,294,967,295 polygons");
        std::uint32_t* const indices = polygons.extend(type, corners);
        // For a polygon without points, the array of points may be null.
        if (points != nullptr && !set_corners({indices, corners}, points))
            return drop_polygon(added);
        if (like_layer != nullptr)
            polygons.copy_attributes(like_layer->polygons, like.index, added);
        if (surface != nullptr)
            polygons.set_surface(added, document_.tags.intern(surface));
    } catch (const std::exception&) { // std::bad_alloc or std::length_error
        fail("addPoly");
        return drop_polygon(added);
    }
    return target_ids_.id<LWPolID>(added);
}

LWPolID MeshEdit::drop_polygon(std::size_t polygon) noexcept
{
    target_layer_->polygons.truncate(polygon);
    return nullptr;
}

std::optional<UndoStep> MeshEdit::commit()
{
    if (!open_)
        return std::nullopt;
    if (failed_in_ != nullptr || !mark_.changed(document_)) {
        rollback();
        return std::nullopt;
    }
    if (mark_.layers() > mark_.old_layers() && is_empty(document_.layers.back())) {
        target_ = fallback_; // the new layer is not wanted, or is empty
        target_layer_ = &document_.layers[target_];
        document_.layers.pop_back();
        mark_.forget_new_layers();
    }
    open_ = false;
    return std::move(mark_);
}

void MeshEdit::rollback() noexcept
{
    if (!open_)
        return;
    mark_.revert(document_);
    open_ = false;
}

} // namespace modeler
