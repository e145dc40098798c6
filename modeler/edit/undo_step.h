// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/document.h"

namespace modeler {

/// The data to undo an edit: the sizes of all arrays of the document before the edit, and the old
/// values of what the edit overwrote. Edits only append, so undo truncates to these sizes.
class UndoStep {
public:
    /// Records the current sizes. The last `new_layers` layers, which must be empty, belong to the
    /// edit: reverting removes them, too.
    explicit UndoStep(const mesh::Document& document, std::size_t new_layers = 0);

    /// Number of points, polygons and maps of a layer before the edit.
    [[nodiscard]] std::size_t points(std::size_t layer) const { return layers_[layer].points; }
    [[nodiscard]] std::size_t polygons(std::size_t layer) const
    {
        return layers_[layer].polygons.polygons;
    }
    [[nodiscard]] std::size_t maps(std::size_t layer) const { return layers_[layer].maps; }

    [[nodiscard]] std::size_t layers() const noexcept { return layers_.size(); }
    /// Number of layers, the first ones, that remain after reverting.
    [[nodiscard]] std::size_t old_layers() const noexcept { return old_layers_; }
    [[nodiscard]] std::size_t tags() const noexcept { return tags_; }

    /// To be called if the new layers were removed, being empty, at the end of the edit.
    void forget_new_layers() { layers_.resize(old_layers_); }

    /// Calls `visit(layer, map, point)` for each saved value, in the order of saving.
    template <typename Visit> void for_each_saved(Visit visit) const
    {
        for (const OldValue& old : old_)
            visit(old.layer, old.map, old.point);
    }

    /// Saves the value of a point in a map, or its absence, before a change. Ignores points and
    /// maps that the edit added, since reverting removes them. @throws std::bad_alloc
    void save_value(const mesh::Document& document, std::size_t layer, std::size_t map,
                    std::uint32_t point);

    /// Whether the edit added or saved anything.
    [[nodiscard]] bool changed(const mesh::Document& document) const;

    /// Restores the document to its state before the edit. Later steps must have been reverted
    /// first. New layers of the step may be missing.
    void revert(mesh::Document& document) const;

private:
    struct LayerMark {
        std::size_t points = 0;
        mesh::Polygons::Mark polygons;
        std::size_t maps = 0;
    };
    /// One value before a change. Its floats, if it had a value, are in `old_values_` from `first`.
    struct OldValue {
        std::size_t layer;
        std::size_t map;
        std::uint32_t point;
        bool had;
        std::size_t first;
    };

    std::vector<LayerMark> layers_;
    std::size_t old_layers_;
    std::size_t tags_;
    std::vector<OldValue> old_;
    mesh::Buffer<float> old_values_;
};

} // namespace modeler
