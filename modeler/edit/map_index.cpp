// SPDX-License-Identifier: MIT
#include "modeler/edit/map_index.h"

#include <cstddef>
#include <string>
#include <utility>

#include "hostapi/mesh_edit.h"

namespace modeler {

namespace {

/// Floats that a caller holds ready for a value of the type; 0 where the type does not say.
std::uint32_t usual_dimension(mesh::FourCC type) noexcept
{
    switch (type) {
    case LWVMAP_WGHT:
    case LWVMAP_MNVW:
        return 1;
    case LWVMAP_TXUV:
        return 2;
    case LWVMAP_MORF:
    case LWVMAP_SPOT:
        return 3;
    default:
        return 0;
    }
}

} // namespace

MapIndex::MapIndex(mesh::Document& document, const Scope& scope, const LastingTexts& texts)
    : texts_(texts), lasting_(64), mask_(lasting_.size() - 1)
{
    for (const std::uint32_t layer : scope.layers(OPLYR_FG | OPLYR_BG)) {
        auto& maps = document.layers[layer].maps;
        for (std::uint32_t i = 0; i < maps.size(); ++i) {
            NamedMap& named = look_up(maps[i].type(), maps[i].name());
            if (named.in_layer(layer) == nullptr) // of several maps of one name the first is meant
                named.add({layer, i, &maps[i]});
        }
    }
}

NamedMap* MapIndex::numbered(std::uint64_t number) noexcept
{
    return number < maps_.size() ? &maps_[number] : nullptr;
}

NamedMap& MapIndex::find_anew(mesh::FourCC type, const char* name)
{
    Slot& slot = passing_[place(type, name) % passing_.size()];
    if (slot.text == name && slot.type == type && slot.map->name == name)
        return *slot.map;
    slot = {name, &look_up(type, name), type};
    if (texts_.holds(name))
        remember(slot);
    return *slot.map;
}

void MapIndex::remember(const Slot& slot)
{
    if ((lasting_count_ + 1) * 2 > lasting_.size()) {
        const std::vector<Slot> before =
            std::exchange(lasting_, std::vector<Slot>(lasting_.size() * 2));
        mask_ = lasting_.size() - 1;
        for (const Slot& known : before)
            if (known.text != nullptr)
                put(known);
    }
    put(slot);
    ++lasting_count_;
}

void MapIndex::put(const Slot& slot) noexcept
{
    std::size_t i = place(slot.type, slot.text) & mask_;
    while (lasting_[i].text != nullptr)
        i = (i + 1) & mask_;
    lasting_[i] = slot;
}

NamedMap& MapIndex::look_up(mesh::FourCC type, std::string_view name)
{
    const auto known = by_name_.find(Key{type, name});
    if (known != by_name_.end())
        return *known->second;
    maps_.push_back({.number = static_cast<std::uint32_t>(maps_.size()),
                     .usual = usual_dimension(type),
                     .places = {},
                     .type = type,
                     .name = std::string(name)});
    by_name_.emplace(Key{type, maps_.back().name}, &maps_.back());
    return maps_.back();
}

} // namespace modeler
