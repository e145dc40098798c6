// SPDX-License-Identifier: MIT
#include "modeler/edit/map_index.h"

#include <algorithm>
#include <cstring>

namespace modeler {

std::optional<std::uint32_t> NamedMap::in_layer(std::uint32_t layer) const noexcept
{
    const auto place = std::lower_bound(places.begin(), places.end(), std::pair{layer, 0u});
    if (place == places.end() || place->first != layer)
        return std::nullopt;
    return place->second;
}

void NamedMap::add_place(std::uint32_t layer, std::uint32_t map)
{
    places.insert(std::lower_bound(places.begin(), places.end(), std::pair{layer, 0u}),
                  {layer, map});
}

NamedMap& MapIndex::find(mesh::FourCC type, const char* name)
{
    const auto address = reinterpret_cast<std::uintptr_t>(name);
    Slot& slot = slots_[(address ^ (address >> 6) ^ type) % slots_.size()];
    if (slot.text == name && slot.map->type == type &&
        std::strcmp(slot.map->name.c_str(), name) == 0)
        return *slot.map;
    NamedMap& map = look_up(type, name);
    slot = {name, &map};
    return map;
}

NamedMap* MapIndex::numbered(std::uint64_t number) noexcept
{
    return number < maps_.size() ? &maps_[number] : nullptr;
}

NamedMap& MapIndex::look_up(mesh::FourCC type, std::string_view name)
{
    const auto known = by_name_.find(Key{type, name});
    if (known != by_name_.end())
        return *known->second;
    NamedMap map{type, std::string(name), static_cast<std::uint32_t>(maps_.size()), false, {}};
    for (const std::uint32_t layer : scope_.layers(3)) {
        const auto& maps = document_.layers[layer].maps;
        const mesh::VertexMap* const found = document_.layers[layer].find_map(type, name);
        if (found != nullptr)
            map.places.emplace_back(layer, static_cast<std::uint32_t>(found - maps.data()));
    }
    maps_.push_back(std::move(map));
    by_name_.emplace(Key{type, maps_.back().name}, &maps_.back());
    return maps_.back();
}

} // namespace modeler
