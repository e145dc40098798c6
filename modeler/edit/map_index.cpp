// SPDX-License-Identifier: MIT
#include "modeler/edit/map_index.h"

#include <cstddef>
#include <string>
#include <utility>

#include "hostapi/mesh_edit.h"

namespace modeler {

namespace {

/// Number of floats that callers expect for a value of this type; 0: not defined by the type.
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

MapIndex::MapIndex(mesh::Document& document, const Scope& scope, const StringPool& strings)
    : strings_(strings), stable_(64), mask_(stable_.size() - 1)
{
    for (const std::uint32_t layer : scope.layers(OPLYR_FG | OPLYR_BG)) {
        auto& maps = document.layers[layer].maps;
        for (std::uint32_t i = 0; i < maps.size(); ++i) {
            NamedMap& named = look_up(maps[i].type(), maps[i].name());
            if (named.in_layer(layer) == nullptr) // the first of several maps of one name counts
                named.add({layer, i, &maps[i]});
        }
    }
}

NamedMap* MapIndex::by_number(std::uint64_t number) noexcept
{
    return number < maps_.size() ? &maps_[number] : nullptr;
}

NamedMap& MapIndex::find_slow(mesh::FourCC type, const char* name)
{
    Slot& slot = recent_[place(type, name) % recent_.size()];
    if (slot.text == name && slot.type == type && slot.map->name == name)
        return *slot.map;
    slot = {name, &look_up(type, name), type};
    if (strings_.contains(name))
        insert_stable(slot);
    return *slot.map;
}

void MapIndex::insert_stable(const Slot& slot)
{
    if ((stable_count_ + 1) * 2 > stable_.size()) {
        const std::vector<Slot> before =
            std::exchange(stable_, std::vector<Slot>(stable_.size() * 2));
        mask_ = stable_.size() - 1;
        for (const Slot& known : before)
            if (known.text != nullptr)
                insert(known);
    }
    insert(slot);
    ++stable_count_;
}

void MapIndex::insert(const Slot& slot) noexcept
{
    std::size_t i = place(slot.type, slot.text) & mask_;
    while (stable_[i].text != nullptr)
        i = (i + 1) & mask_;
    stable_[i] = slot;
}

NamedMap& MapIndex::look_up(mesh::FourCC type, std::string_view name)
{
    const auto known = by_name_.find(Key{type, name});
    if (known != by_name_.end())
        return *known->second;
    maps_.push_back({.number = static_cast<std::uint32_t>(maps_.size()),
                     .caller_dimension = usual_dimension(type),
                     .places = {},
                     .type = type,
                     .name = std::string(name)});
    by_name_.emplace(Key{type, maps_.back().name}, &maps_.back());
    return maps_.back();
}

} // namespace modeler
