// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "mesh/fourcc.h"
#include "mesh/vertex_map.h"
#include "modeler/edit/ids.h"

namespace modeler {

/// A type and name of vertex maps, and the maps of it.
struct NamedMap {
    /// A map of a layer.
    struct Place {
        std::uint32_t layer;
        std::uint32_t map; ///< position in the layer's list
        mesh::VertexMap* values;
    };

    mesh::FourCC type;
    std::string name;
    std::uint32_t number; ///< of this record, from 0
    std::size_t usual;    ///< floats that a caller holds ready for a value; 0: not known
    bool written = false; ///< the edit has written to a map of it
    /// The map of the layer that is added to, once a point that was added has a value in it;
    /// otherwise null.
    mesh::VertexMap* target = nullptr;
    std::vector<Place> places; ///< one for each layer that has such a map, in ascending order

    /// The ids of the layer that values were read from last, and the map of it; an empty map where
    /// that one's values are not of the usual length.
    LayerIds read_ids{Element::no_layer};
    const mesh::VertexMap* read_map = &nothing();

    /// The map in a layer, or null.
    [[nodiscard]] const Place* in_layer(std::uint32_t layer) const noexcept;

    /// Adds the map of a layer that had none.
    void add(const Place& place);

private:
    /// A map without values.
    [[nodiscard]] static const mesh::VertexMap& nothing();
};

} // namespace modeler
