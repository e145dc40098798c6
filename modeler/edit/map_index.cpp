// SPDX-License-Identifier: MIT
#include "modeler/edit/map_index.h"

#include <algorithm>
#include <cstring>

#include "hostapi/mesh_edit.h"

namespace modeler {

void NamedMap::add_place(std::uint32_t layer, std::uint32_t map)
{
    places.insert(std::lower_bound(places.begin(), places.end(), std::pair{layer, 0u}),
                  {layer, map});
}

MapIndex::MapIndex(const mesh::Document& document, const Scope& scope)
{
    for (const std::uint32_t layer : scope.layers(OPLYR_FG | OPLYR_BG)) {
        const auto& maps = document.layers[layer].maps;
        for (std::uint32_t i = 0; i < maps.size(); ++i) {
            NamedMap& named = look_up(maps[i].type(), maps[i].name());
            if (!named.in_layer(layer)) // of several maps of one name the first is meant
                named.add_place(layer, i);
        }
    }
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
    maps_.push_back({type, std::string(name), static_cast<std::uint32_t>(maps_.size()), false, {}});
    by_name_.emplace(Key{type, maps_.back().name}, &maps_.back());
    return maps_.back();
}

} // namespace modeler
