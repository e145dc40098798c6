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

/// A type and name of vertex maps, with the maps of this type and name in all layers.
struct alignas(64) NamedMap {
    /// A map of a layer.
    struct Place {
        std::uint32_t layer;
        std::uint32_t map; ///< position in the layer's list
        mesh::VertexMap* values;
    };

    // The fields for reading come first, within one cache line: with very many maps most lookups
    // only find that a point has no value.
    std::uint32_t number;           ///< index of this record in the MapIndex
    std::uint32_t caller_dimension; ///< floats that a caller holds ready for a value; 0: not known
    std::uint32_t first_layer = Element::no_layer; ///< of `places`; no layer where there are none
    std::uint32_t last_layer = 0;                  ///< of `places`
    /// Cache for reading: the handles of the layer that was read last, and its map. An empty map if
    /// the dimension of that map is not `caller_dimension`.
    LayerIds read_ids{Element::no_layer};
    const mesh::VertexMap* read_map = &empty_map();
    /// The map in the target layer of the edit once an added point has a value in it, otherwise
    /// null.
    mesh::VertexMap* target = nullptr;
    std::vector<Place> places; ///< one for each layer that has such a map, in ascending order

    mesh::FourCC type;
    std::string name;
    bool written = false; ///< the edit has written to a map of it

    /// The map in a layer, or null.
    [[nodiscard]] const Place* in_layer(std::uint32_t layer) const noexcept
    {
        return layer < first_layer || layer > last_layer ? nullptr : in_layer_between(layer);
    }

    /// Adds the map of a layer that has no place yet.
    void add(const Place& place);

private:
    [[nodiscard]] const Place* in_layer_between(std::uint32_t layer) const noexcept;
    /// A map without values.
    [[nodiscard]] static const mesh::VertexMap& empty_map();
};

} // namespace modeler
