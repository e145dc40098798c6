// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "mesh/document.h"

namespace modeler {

/// How much of a document was there at one moment, and the old values of what was written over
/// since. What was added lies behind the marks, so that taking it back is cutting it off.
class UndoStep {
public:
    /// Marks the document as it is now, but for its last `new_layers` layers, which are empty and
    /// were added for what is to come: taking it back takes them away, too.
    explicit UndoStep(const mesh::Document& document, std::size_t new_layers = 0);

    /// Number of points, polygons and maps of a layer when the mark was set.
    [[nodiscard]] std::size_t points(std::size_t layer) const { return layers_[layer].points; }
    [[nodiscard]] std::size_t polygons(std::size_t layer) const
    {
        return layers_[layer].polygons.polygons;
    }
    [[nodiscard]] std::size_t maps(std::size_t layer) const { return layers_[layer].maps; }

    [[nodiscard]] std::size_t layers() const noexcept { return layers_.size(); }
    /// How many of them, the first ones, stay when the step is taken back.
    [[nodiscard]] std::size_t old_layers() const noexcept { return old_layers_; }
    [[nodiscard]] std::size_t tags() const noexcept { return tags_; }

    /// For new layers that went empty before the step came to its end.
    void forget_new_layers() { layers_.resize(old_layers_); }

    /// Calls `visit(layer, map, point)` for each value that was kept, in the order of keeping.
    template <typename Visit> void for_each_saved(Visit visit) const
    {
        for (const OldValue& old : old_)
            visit(old.layer, old.map, old.point);
    }

    /// Keeps the value that a map has at a point, or that it has none, before it is changed. Only
    /// what lies before the mark is kept; the rest is cut off anyway.
    void save_value(const mesh::Document& document, std::size_t layer, std::size_t map,
                    std::uint32_t point);

    /// Whether the document holds anything that was not there when the mark was set.
    [[nodiscard]] bool changed(const mesh::Document& document) const;

    /// Brings the document back to what it was when the mark was set. Later steps must have been
    /// taken back before. Does the same where new layers are not all there.
    void revert(mesh::Document& document) const;

private:
    struct LayerMark {
        std::size_t points = 0;
        mesh::Polygons::Mark polygons;
        std::size_t maps = 0;
    };
    /// One value before it was changed. Its floats, if it had any, lie in `old_values_`.
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
