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

/// One edit on a document: what it holds is read as it was when the edit began, and what is added
/// goes behind that, into one foreground layer, until the edit is kept or dropped.
///
/// The operations are those of MeshEditOp, with its arguments and results; each checks what it is
/// given. Memory that ends is not thrown on: the operation gives its null or code, the edit has
/// failed from then on and adds nothing more, and `commit` refuses it.
class MeshEdit {
public:
    /// Where an edit adds points and polygons.
    struct Target {
        std::uint32_t layer = 0; ///< position of a foreground layer
        bool is_new = false;     ///< it is the last one, and goes when it is still empty in the end
        /// Of a new layer: the foreground layer to add to in its place where it is not wanted, and
        /// who says so when something is first added. None: it is wanted.
        std::uint32_t fallback = 0;
        const std::function<bool()>* is_wanted = nullptr;
    };

    /// Roles: one for each layer. `texts`: those of the caller that last as long as the edit.
    /// Document and texts must outlive it.
    MeshEdit(mesh::Document& document, const std::vector<LayerRole>& roles, Target target,
             const StringPool& strings);
    MeshEdit(const MeshEdit&) = delete;
    MeshEdit& operator=(const MeshEdit&) = delete;
    ~MeshEdit() { rollback(); }

    [[nodiscard]] int point_count(int selector, int mode);
    [[nodiscard]] int polygon_count(int selector, int mode) const;
    /// What the callback throws is thrown on. The callback may end the edit: the scan then stops.
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
        // A copy, because writing to maps moves the values.
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
        // A point of the layer that was read last: this is how nearly all values are read.
        const float* const stored = selected_->read_map->find_in_run(selected_->read_ids.index(id));
        if (stored == nullptr)
            return map_value_slow(from_id(id), value);
        mesh::copy_floats(stored, value, selected_->caller_dimension);
        return true;
    }
    [[nodiscard]] int set_map_value(LWPntID id, LWID type, const char* name, int dimension,
                                    const float* value)
    {
        // A point behind the others that have a value, which are new ones: nothing is to be kept
        // for undo. This is how the values of nearly all points come.
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
        // With the attributes of a pattern, in room that is there: this is how nearly all come.
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

    /// Whether the edit was neither kept nor dropped so far.
    [[nodiscard]] bool open() const noexcept { return open_; }
    /// Name of the operation in which memory, or room in the layer, ended; null: none.
    [[nodiscard]] const char* failed_in() const noexcept { return failed_in_; }

    /// Type of polygons that `add_polygon` refused as one that no file can hold: not of four
    /// printable characters, and not copied from a polygon that has it. The edit has failed then.
    [[nodiscard]] std::optional<LWID> refused_type() const noexcept { return refused_type_; }

    /// What was there when the edit began.
    [[nodiscard]] const UndoStep& mark() const noexcept { return mark_; }
    /// Position of the layer to which points and polygons are added.
    [[nodiscard]] std::uint32_t target() const noexcept { return target_; }
    /// Maps that were written to, as positions of a layer and of a map in its list, one for each
    /// type and name, in order of first writing.
    [[nodiscard]] std::span<const std::pair<std::uint32_t, std::uint32_t>> written() const noexcept
    {
        return written_;
    }

    /// Ends the edit and keeps what was added: gives what takes it back again. An edit that has
    /// failed, or changed nothing, gives none, and what it may have added is dropped.
    [[nodiscard]] std::optional<UndoStep> commit();
    /// Ends the edit, if it is open, and takes everything back.
    void rollback() noexcept;

private:
    /// Points, or polygons, that a layer can hold.
    static constexpr std::size_t most_elements = std::numeric_limits<std::uint32_t>::max();

    /// The layer that the point is in, if the edit sees it and the point is there.
    [[nodiscard]] const mesh::Layer* layer_of_point(Element point) const noexcept
    {
        const mesh::Layer* const layer = point.layer < seen_.size() ? seen_[point.layer] : nullptr;
        return layer != nullptr && point.index < layer->points.size() ? layer : nullptr;
    }
    /// The same of a polygon.
    [[nodiscard]] const mesh::Layer* layer_of_polygon(Element polygon) const noexcept
    {
        const mesh::Layer* const layer =
            polygon.layer < seen_.size() ? seen_[polygon.layer] : nullptr;
        return layer != nullptr && polygon.index < layer->polygons.size() ? layer : nullptr;
    }
    /// Finds out, before the first is added, which layer is to be added to. Nothing is added in any
    /// other than the ways that fit every case before that: a new layer has neither room nor maps.
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
    // The ways that fit every case.
    const EDPointInfo* point_info_slow(LWPntID id);
    LWPntID add_point_slow(const double* position);
    LWPolID add_polygon_slow(LWID type, LWPolID pattern, const char* surface, int count,
                             const LWPntID* points);
    bool map_value_slow(Element point, float* value);
    void* select_map_slow(void* handle, LWID type, const char* name);
    /// Makes this the map that values are read from, if some layer has it. Gives its handle.
    void* select(NamedMap* named) noexcept
    {
        selected_ = named != nullptr && !named->places.empty() ? named : nullptr;
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to us, never an address
        return reinterpret_cast<void*>(
            selected_ != nullptr ? static_cast<std::uintptr_t>(selected_->number) + 1 : 0);
    }
    [[nodiscard]] std::size_t selected_points(std::uint32_t layer) const;
    /// Makes the room behind `point_info` long enough for values of so many floats.
    void reserve_value(std::size_t dimension);
    int set_map_value_slow(LWPntID id, LWID type, const char* name, int dimension,
                           const float* value);
    int write_value(Element point, LWID type, const char* name, std::span<const float> value);
    /// Sets corners to the points that ids spell. False where one is no point of the layer.
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
    /// Takes the last polygon away. Gives null, as the result of an operation that failed.
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
    std::vector<const mesh::Layer*> seen_;   ///< by position; null: hidden from the edit
    std::uint32_t fallback_;                 ///< the target where the new layer is not wanted
    const std::function<bool()>* is_wanted_; ///< null: it is settled
    bool open_ = true;
    const char* failed_in_ = nullptr;
    std::optional<LWID> refused_type_;

    NamedMap* selected_ = nullptr; ///< map of `point_info` and `map_value`
    std::vector<std::pair<std::uint32_t, std::uint32_t>> written_;

    EDPointInfo point_info_{};
    // The layer of the point that was asked for last.
    LayerIds info_ids_;
    const mesh::Layer* info_layer_;
    /// What `point_info_` points to; room for the longest value. Never empty: its address tells
    /// that there is a value.
    std::vector<float> point_value_;
    PolygonRecord polygon_info_;
};

} // namespace modeler
