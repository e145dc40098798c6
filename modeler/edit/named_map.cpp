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

const NamedMap::Place* NamedMap::in_layer(std::uint32_t layer) const noexcept
{
    const auto found = std::lower_bound(places.begin(), places.end(), layer, before);
    return found != places.end() && found->layer == layer ? &*found : nullptr;
}

void NamedMap::add(const Place& place)
{
    read_layer = Element::no_layer; // it may be this one, which had no map
    read_map = nullptr;
    places.insert(std::lower_bound(places.begin(), places.end(), place.layer, before), place);
}

} // namespace modeler
