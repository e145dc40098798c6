// SPDX-License-Identifier: MIT
#include "modeler/edit/named_map.h"

#include <algorithm>

namespace modeler {

namespace {

bool before(const NamedMap::Place& place, std::uint32_t layer) noexcept
{
    return place.layer < layer;
}

} // namespace

const NamedMap::Place* NamedMap::in_layer_between(std::uint32_t layer) const noexcept
{
    const auto found = std::lower_bound(places.begin(), places.end(), layer, before);
    return found != places.end() && found->layer == layer ? &*found : nullptr;
}

void NamedMap::add(const Place& place)
{
    places.insert(std::lower_bound(places.begin(), places.end(), place.layer, before), place);
    first_layer = places.front().layer;
    last_layer = places.back().layer;
}

const mesh::VertexMap& NamedMap::empty_map()
{
    static const mesh::VertexMap none(0, "", 0);
    return none;
}

} // namespace modeler
