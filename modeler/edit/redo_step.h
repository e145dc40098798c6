// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "mesh/document.h"
#include "modeler/edit/undo_step.h"

namespace modeler {

/// The data to redo an undone step: copies of the elements behind the step's marks, and the newer
/// version of each value that the undo restored. Holds only that part of the mesh.
class RedoStep {
public:
    /// Copies what `undo` is about to remove or overwrite. @throws std::bad_alloc
    RedoStep(const mesh::Document& document, UndoStep undo);

    [[nodiscard]] const UndoStep& undo() const noexcept { return undo_; }

    /// Redoes the step. The document must be in the state right after the undo.
    /// @throws std::bad_alloc; the document is then unchanged
    void apply(mesh::Document& document) const;

    /// Moves out the step that undoes this one.
    [[nodiscard]] UndoStep take_undo() { return std::move(undo_); }

private:
    /// Values of one map, of points in ascending order.
    struct MapTail {
        mesh::Buffer<std::uint32_t> points;
        mesh::Buffer<float> values;
    };
    struct TagTail {
        mesh::FourCC kind = 0;
        mesh::Buffer<mesh::TagIndex> of_polygon;
    };
    struct LayerTail {
        mesh::Buffer<mesh::Vec3> points;
        mesh::Buffer<mesh::FourCC> types;
        mesh::Buffer<std::uint32_t> corner_counts;
        mesh::Buffer<std::uint32_t> corners;
        mesh::Buffer<mesh::TagIndex> surfaces;
        mesh::Buffer<std::uint8_t> flags;
        mesh::Buffer<std::uint8_t> selected;
        std::vector<TagTail> tags;
        std::vector<MapTail> old_maps; ///< for each map older than the step: values of new points
        std::vector<mesh::VertexMap> new_maps;
    };
    /// A layer that the step added, without its contents.
    struct NewLayer {
        std::string name;
        std::uint16_t number = 0;
    };
    /// The newer value of a point that is older than the step.
    struct NewValue {
        std::size_t layer = 0;
        std::size_t map = 0;
        std::uint32_t point = 0;
        std::vector<float> value;
        bool has = false;
    };

    [[nodiscard]] LayerTail tail_of(const mesh::Document& document, std::size_t layer) const;
    void add_to(mesh::Layer& layer, const LayerTail& tail) const;

    UndoStep undo_;
    std::vector<NewLayer> new_layers_;
    std::vector<LayerTail> tails_;
    std::vector<NewValue> values_;
    std::vector<std::string> texts_; ///< new tags
};

} // namespace modeler
