// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "mesh/document.h"
#include "modeler/edit/ids.h"
#include "modeler/edit/map_index.h"
#include "modeler/edit/scope.h"
#include "modeler/edit/undo_step.h"

namespace modeler {

/// One edit on a document: what it holds is read as it was when the edit began, and what is added
/// goes behind that, into the first foreground layer, until the edit is kept or dropped.
///
/// The operations are those of MeshEditOp, with its arguments and results; each checks what it is
/// given. Memory that ends is not thrown on: the operation gives its null or code, the edit has
/// failed from then on and adds nothing more, and `keep` refuses it.
class MeshEdit {
public:
    /// Roles: one for each layer, at least one of them foreground. The document must outlive the
    /// edit.
    MeshEdit(mesh::Document& document, const std::vector<LayerRole>& roles);
    MeshEdit(const MeshEdit&) = delete;
    MeshEdit& operator=(const MeshEdit&) = delete;
    ~MeshEdit() { drop(); }

    [[nodiscard]] int point_count(int selector, int mode);
    [[nodiscard]] int polygon_count(int selector, int mode) const;
    /// What the callback throws is thrown on. The callback may end the edit: the scan then stops.
    [[nodiscard]] int scan(EDPolyScanFunc* callback, void* data, int selector);

    [[nodiscard]] const EDPointInfo* point_info(LWPntID id);
    [[nodiscard]] const EDPolygonInfo* polygon_info(LWPolID id);
    [[nodiscard]] bool normal(LWPolID id, double* normal) const;

    [[nodiscard]] void* select_map(void* handle, LWID type, const char* name);
    [[nodiscard]] bool map_value(LWPntID id, float* value) const;
    [[nodiscard]] int set_map_value(LWPntID id, LWID type, const char* name, int dimension,
                                    const float* value)
    {
        // A new point, in a map that was written to before: nothing is to be kept for undo. This is
        // how the values of nearly all points come.
        const std::uint64_t index = index_in(target_, id);
        if (name != nullptr && is_new(index) && failed_in_ == nullptr) {
            const NamedMap* const named = maps_.known(type, name);
            if (named != nullptr && named->written) {
                const std::uint32_t place = named->in_layer(target_);
                if (place != NamedMap::nowhere && value != nullptr &&
                    target_layer_->maps[place].dimension() == static_cast<std::size_t>(dimension))
                    return write(target_layer_->maps[place], static_cast<std::uint32_t>(index),
                                 value);
            }
        }
        return set_any_map_value(id, type, name, dimension, value);
    }

    [[nodiscard]] LWPntID add_point(const double* position);
    [[nodiscard]] LWPolID add_polygon(LWID type, LWPolID pattern, const char* surface, int count,
                                      const LWPntID* points);

    /// Whether the edit was neither kept nor dropped so far.
    [[nodiscard]] bool open() const noexcept { return open_; }
    /// Name of the operation in which memory, or room in the layer, ended; null: none.
    [[nodiscard]] const char* failed_in() const noexcept { return failed_in_; }

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
    [[nodiscard]] std::optional<UndoStep> keep();
    /// Ends the edit, if it is open, and takes everything back.
    void drop() noexcept;

private:
    /// A polygon's record and the ids it points to.
    struct PolygonRecord {
        EDPolygonInfo info{};
        std::vector<LWPntID> points;
    };

    [[nodiscard]] Element point(LWPntID id) const noexcept;
    [[nodiscard]] Element polygon(LWPolID id) const noexcept;
    [[nodiscard]] const mesh::VertexMap* selected_map(Element point) const noexcept;
    void describe(Element polygon, PolygonRecord& record) const;
    [[nodiscard]] std::size_t selected_points(std::uint32_t layer) const;
    /// Whether this is the index of a point that was added by this edit.
    [[nodiscard]] bool is_new(std::uint64_t index) const noexcept
    {
        return index >= old_points_ && index < target_layer_->points.size();
    }
    int write(mesh::VertexMap& map, std::uint32_t point, const float* value)
    {
        try {
            map.set(point, {value, map.dimension()});
            return EDERR_NONE;
        } catch (const std::bad_alloc&) {
            fail("pntVMap");
            return EDERR_NOMEMORY;
        }
    }
    int set_any_map_value(LWPntID id, LWID type, const char* name, int dimension,
                          const float* value);
    int write_value(Element point, LWID type, const char* name, std::span<const float> value);
    void append_polygon(LWID type, Element pattern, const char* surface);
    void fail(const char* operation) noexcept;

    mesh::Document& document_;
    Scope scope_;
    UndoStep mark_;
    MapIndex maps_;
    std::uint32_t target_;
    mesh::Layer* target_layer_; ///< the same layer; an edit neither adds nor moves layers
    std::size_t old_points_;    ///< in that layer when the edit began
    bool open_ = true;
    const char* failed_in_ = nullptr;

    const NamedMap* selected_ = nullptr; ///< map of `point_info` and `map_value`
    std::vector<std::pair<std::uint32_t, std::uint32_t>> written_;

    EDPointInfo point_info_{};
    std::vector<float> point_value_; ///< what `point_info_` points to
    PolygonRecord polygon_info_;
    std::vector<std::uint32_t> corners_; ///< of the polygon being added
};

} // namespace modeler
