// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "mesh/document.h"
#include "mesh/floats.h"
#include "modeler/edit/ids.h"
#include "modeler/edit/map_index.h"
#include "modeler/edit/polygon_record.h"
#include "modeler/edit/scope.h"
#include "modeler/edit/undo_step.h"

namespace modeler {

/// One edit transaction on a document. Counting and scanning see the document as it was when the
/// edit began; new points and polygons are appended to one foreground layer. Ends with `commit` or
/// `rollback`.
///
/// The operations implement MeshEditOp with its arguments and results; each validates its
/// arguments. Out of memory is reported by the return value, never by an exception: the edit has
/// failed from then on, adds nothing more, and `commit` refuses it.
class MeshEdit {
public:
    /// Where an edit adds points and polygons.
    struct Target {
        std::uint32_t layer = 0; ///< index of a foreground layer in the document
        bool is_new = false;     ///< the last layer, new; removed if it is still empty at the end
        /// Only for a new layer: the foreground layer to use instead if `is_wanted` returns false.
        /// `is_wanted` is called once, when something is first added; null: the layer is wanted.
        std::uint32_t fallback = 0;
        const std::function<bool()>* is_wanted = nullptr;
    };

    /// @param roles    one for each layer
    /// @param strings  the stable strings of the caller
    /// Document and strings must outlive the edit.
    MeshEdit(mesh::Document& document, const std::vector<LayerRole>& roles, Target target,
             const StringPool& strings);
    MeshEdit(const MeshEdit&) = delete;
    MeshEdit& operator=(const MeshEdit&) = delete;
    ~MeshEdit() { rollback(); }

    [[nodiscard]] int point_count(int selector, int mode);
    [[nodiscard]] int polygon_count(int selector, int mode) const;
    /// Exceptions of the callback propagate. If the callback ends the edit, the scan stops.
    [[nodiscard]] int scan(EDPolyScanFunc* callback, void* data, int selector);

    [[nodiscard]] const EDPointInfo* point_info(LWPntID id)
    {
        const std::uint64_t index = info_ids_.index(id);
        if (index >= info_layer_->points.size())
            return point_info_slow(id);
        const mesh::Vec3& position = info_layer_->points[index];
        point_info_.pnt = id;
        point_info_.position[0] = position.x;
        point_info_.position[1] = position.y;
        point_info_.position[2] = position.z;
        // A copy, because writing to maps may reallocate the values.
        const bool valued = map_value(id, point_value_.data());
        point_info_.vmap_value = valued ? point_value_.data() : nullptr;
        return &point_info_;
    }
    [[nodiscard]] const EDPolygonInfo* polygon_info(LWPolID id);
    [[nodiscard]] bool normal(LWPolID id, double* normal) const;

    [[nodiscard]] void* select_map(void* handle, LWID type, const char* name)
    {
        NamedMap* const named = handle == nullptr ? maps_.find_cached(type, name) : nullptr;
        return named != nullptr ? select(named) : select_map_slow(handle, type, name);
    }
    [[nodiscard]] bool map_value(LWPntID id, float* value)
    {
        if (selected_ == nullptr || value == nullptr)
            return false;
        // Fast path: a point of the layer that was read last, in a contiguous map.
        const float* const stored = selected_->read_map->find_in_run(selected_->read_ids.index(id));
        if (stored == nullptr)
            return map_value_slow(from_id(id), value);
        mesh::copy_floats(stored, value, selected_->caller_dimension);
        return true;
    }
    [[nodiscard]] int set_map_value(LWPntID id, LWID type, const char* name, int dimension,
                                    const float* value)
    {
        // Fast path: a new point behind all points with a value; nothing to save for undo.
        const NamedMap* const named = maps_.find_cached(type, name);
        mesh::VertexMap* const map = named != nullptr ? named->target : nullptr;
        const std::uint64_t index = target_ids_.index(id);
        if (map != nullptr && value != nullptr && index < target_layer_->points.size() &&
            failed_in_ == nullptr && map->dimension() == static_cast<std::size_t>(dimension) &&
            map->extend_run(static_cast<std::uint32_t>(index),
                            {value, static_cast<std::size_t>(dimension)}))
            return EDERR_NONE;
        return set_map_value_slow(id, type, name, dimension, value);
    }

    [[nodiscard]] LWPntID add_point(const double* position)
    {
        mesh::Buffer<mesh::Vec3>& points = target_layer_->points;
        const std::size_t index = points.size();
        if (position == nullptr || failed_in_ != nullptr || points.spare_capacity() == 0 ||
            index >= most_elements)
            return add_point_slow(position);
        *points.extend(1) = {position[0], position[1], position[2]};
        return target_ids_.id<LWPntID>(index);
    }
    [[nodiscard]] LWPolID add_polygon(LWID type, LWPolID pattern, const char* surface, int count,
                                      const LWPntID* points)
    {
        const Element like = from_id(pattern);
        const mesh::Layer* const like_layer = layer_of_polygon(like);
        if (like_layer == nullptr || surface != nullptr || count <= 0 || points == nullptr ||
            failed_in_ != nullptr)
            return add_polygon_slow(type, pattern, surface, count, points);
        // Fast path: attributes copied from a pattern polygon, within the spare capacity.
        mesh::Polygons& polygons = target_layer_->polygons;
        const std::size_t added = polygons.size();
        const auto corners = static_cast<std::size_t>(count);
        std::uint32_t* const indices =
            added < most_elements
                ? polygons.try_extend(type, corners, like_layer->polygons, like.index)
                : nullptr;
        if (indices == nullptr)
            return add_polygon_slow(type, pattern, surface, count, points);
        if (!set_corners({indices, corners}, points))
            return drop_polygon(added);
        return target_ids_.id<LWPolID>(added);
    }

    /// Whether the edit was neither committed nor rolled back so far.
    [[nodiscard]] bool open() const noexcept { return open_; }
    /// Name of the first operation that ran out of memory or exceeded a limit of the layer; null:
    /// none.
    [[nodiscard]] const char* failed_in() const noexcept { return failed_in_; }

    /// Polygon type that `add_polygon` refused because no file can store it: not four printable
    /// characters, and not copied from an existing polygon. The edit has then failed.
    [[nodiscard]] std::optional<LWID> refused_type() const noexcept { return refused_type_; }

    /// The state of the document when the edit began.
    [[nodiscard]] const UndoStep& mark() const noexcept { return mark_; }
    /// Index of the layer to which points and polygons are added.
    [[nodiscard]] std::uint32_t target() const noexcept { return target_; }
    /// Maps that were written to, as pairs of layer index and map index; one pair for each type and
    /// name, in order of the first write.
    [[nodiscard]] std::span<const std::pair<std::uint32_t, std::uint32_t>> written() const noexcept
    {
        return written_;
    }

    /// Ends the edit, keeps its changes, and returns the step that undoes them. An edit that has
    /// failed or changed nothing is rolled back instead, and the result is empty.
    [[nodiscard]] std::optional<UndoStep> commit();
    /// Ends the edit, if it is open, and reverts its changes.
    void rollback() noexcept;

private:
    /// Maximum number of points, and of polygons, of a layer.
    static constexpr std::size_t most_elements = std::numeric_limits<std::uint32_t>::max();

    /// The point's layer if the edit sees it and the point exists, otherwise null.
    [[nodiscard]] const mesh::Layer* layer_of_point(Element point) const noexcept
    {
        const mesh::Layer* const layer = point.layer < seen_.size() ? seen_[point.layer] : nullptr;
        return layer != nullptr && point.index < layer->points.size() ? layer : nullptr;
    }
    /// The polygon's layer if the edit sees it and the polygon exists, otherwise null.
    [[nodiscard]] const mesh::Layer* layer_of_polygon(Element polygon) const noexcept
    {
        const mesh::Layer* const layer =
            polygon.layer < seen_.size() ? seen_[polygon.layer] : nullptr;
        return layer != nullptr && polygon.index < layer->polygons.size() ? layer : nullptr;
    }
    /// Decides which layer is added to, before the first element is added. Only the slow paths call
    /// it: a new layer has neither spare capacity nor maps, so the fast paths cannot come first.
    void resolve_target()
    {
        if (is_wanted_ == nullptr)
            return;
        const bool wanted = (*std::exchange(is_wanted_, nullptr))();
        if (wanted)
            return;
        target_ = fallback_;
        target_ids_ = LayerIds(target_);
        target_layer_ = &document_.layers[target_];
    }
    // Slow paths: handle all cases.
    const EDPointInfo* point_info_slow(LWPntID id);
    LWPntID add_point_slow(const double* position);
    LWPolID add_polygon_slow(LWID type, LWPolID pattern, const char* surface, int count,
                             const LWPntID* points);
    bool map_value_slow(Element point, float* value);
    void* select_map_slow(void* handle, LWID type, const char* name);
    /// Selects the map that values are read from; none if no layer has it. Returns its handle.
    void* select(NamedMap* named) noexcept
    {
        selected_ = named != nullptr && !named->places.empty() ? named : nullptr;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to us, never an address
        return reinterpret_cast<void*>(
            selected_ != nullptr ? static_cast<std::uintptr_t>(selected_->number) + 1 : 0);
    }
    [[nodiscard]] std::size_t selected_points(std::uint32_t layer) const;
    /// Grows `point_value_` to at least `dimension` floats.
    void reserve_value(std::size_t dimension);
    int set_map_value_slow(LWPntID id, LWID type, const char* name, int dimension,
                           const float* value);
    int write_value(Element point, LWID type, const char* name, std::span<const float> value);
    /// Decodes point handles into corner indices. False if one is no point of the target layer.
    bool set_corners(std::span<std::uint32_t> corners, const LWPntID* points) const noexcept
    {
        const std::uint64_t there = target_layer_->points.size();
        std::size_t known = 0;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const std::uint64_t index = target_ids_.index(points[i]);
            known += index < there ? 1u : 0u;
            corners[i] = static_cast<std::uint32_t>(index);
        }
        return known == corners.size();
    }
    /// Removes the last polygon and returns null, the result of a failed operation.
    LWPolID drop_polygon(std::size_t polygon) noexcept;
    void fail(const char* operation) noexcept
    {
        if (failed_in_ == nullptr)
            failed_in_ = operation;
    }

    mesh::Document& document_;
    Scope scope_;
    UndoStep mark_;
    MapIndex maps_;
    std::uint32_t target_;
    LayerIds target_ids_;
    mesh::Layer* target_layer_; ///< the same layer; an edit neither adds nor moves layers
    std::vector<const mesh::Layer*> seen_;   ///< by layer index; null: not visible to the edit
    std::uint32_t fallback_;                 ///< the target where the new layer is not wanted
    const std::function<bool()>* is_wanted_; ///< null: it is settled
    bool open_ = true;
    const char* failed_in_ = nullptr;
    std::optional<LWID> refused_type_;

    NamedMap* selected_ = nullptr; ///< map of `point_info` and `map_value`
    std::vector<std::pair<std::uint32_t, std::uint32_t>> written_;

    EDPointInfo point_info_{};
    // The layer of the last point passed to `point_info`.
    LayerIds info_ids_;
    const mesh::Layer* info_layer_;
    /// Buffer for `point_info_.vmap_value`, as long as the longest value. Never empty, since a
    /// non-null address means that there is a value.
    std::vector<float> point_value_;
    PolygonRecord polygon_info_;
};

} // namespace modeler
