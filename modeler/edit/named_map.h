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
struct alignas(64) NamedMap {
    /// A map of a layer.
    struct Place {
        std::uint32_t layer;
        std::uint32_t map; ///< position in the layer's list
        mesh::VertexMap* values;
    };

    // What reading asks for comes first, in one line of the cache: with very many maps it is mostly
    // to find that a point has no value.
    std::uint32_t number;           ///< of this record, from 0
    std::uint32_t caller_dimension; ///< floats that a caller holds ready for a value; 0: not known
    std::uint32_t first_layer = Element::no_layer; ///< of `places`; no layer where there are none
    std::uint32_t last_layer = 0;                  ///< of `places`
    /// The ids of the layer that values were read from last, and the map of it; an empty map where
    /// that one's values are not of the usual length.
    LayerIds read_ids{Element::no_layer};
    const mesh::VertexMap* read_map = &empty_map();
    /// The map of the layer that is added to, once a point that was added has a value in it;
    /// otherwise null.
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

    /// Adds the map of a layer that had none.
    void add(const Place& place);

private:
    [[nodiscard]] const Place* in_layer_between(std::uint32_t layer) const noexcept;
    /// A map without values.
    [[nodiscard]] static const mesh::VertexMap& empty_map();
};

} // namespace modeler
