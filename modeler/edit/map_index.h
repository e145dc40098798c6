// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mesh/document.h"
#include "modeler/edit/scope.h"

namespace modeler {

/// A type and name of vertex maps, and where maps of it are.
struct NamedMap {
    mesh::FourCC type;
    std::string name;
    std::uint32_t number; ///< of this record, from 0
    std::size_t usual;    ///< floats that a caller holds ready for a value; 0: not known
    bool written = false; ///< the edit has written to a map of it

    /// Position of the map in a layer's list, or `nowhere`.
    [[nodiscard]] std::uint32_t in_layer(std::uint32_t layer) const noexcept
    {
        return layer < places.size() ? places[layer] : nowhere;
    }
    void add_place(std::uint32_t layer, std::uint32_t map);

    static constexpr std::uint32_t nowhere = 0xFFFFFFFFu;
    /// For each layer up to the last one that has such a map: its position in the layer's list.
    std::vector<std::uint32_t> places;
};

/// Finds the maps of a type and name in the layers that an edit sees.
///
/// The same name asked for again costs one comparison of texts: a caller gives a name by the
/// address of its own text, so the address leads to the last answer. The address alone proves
/// nothing, since the caller may have written or allocated another text there: the texts are always
/// compared.
class MapIndex {
public:
    /// Lists the maps of all layers that `scope` sees.
    MapIndex(const mesh::Document& document, const Scope& scope);

    /// The record of this type and name, made where there was none: it then has no places. Valid as
    /// long as the index.
    [[nodiscard]] NamedMap& find(mesh::FourCC type, const char* name)
    {
        Slot& slot = slots_[place(type, name)];
        if (!holds(slot, type, name))
            slot = {name, &look_up(type, name)};
        return *slot.map;
    }

    /// The same record, where this text led to it before; otherwise null.
    [[nodiscard]] const NamedMap* known(mesh::FourCC type, const char* name) const noexcept
    {
        const Slot& slot = slots_[place(type, name)];
        return holds(slot, type, name) ? slot.map : nullptr;
    }

    /// The record of this number, or null.
    [[nodiscard]] NamedMap* numbered(std::uint64_t number) noexcept;

private:
    static constexpr std::size_t slot_count = 64;
    struct Slot {
        const char* text = nullptr;
        NamedMap* map = nullptr;
    };
    struct Key {
        mesh::FourCC type;
        std::string_view name; ///< of the record

        friend bool operator==(const Key&, const Key&) = default;
    };
    struct KeyHash {
        std::size_t operator()(const Key& key) const noexcept
        {
            return std::hash<std::string_view>{}(key.name) * 31u + key.type;
        }
    };

    [[nodiscard]] static std::size_t place(mesh::FourCC type, const char* name) noexcept
    {
        const auto address = reinterpret_cast<std::uintptr_t>(name);
        return (address ^ (address >> 6) ^ type) % slot_count;
    }
    [[nodiscard]] static bool holds(const Slot& slot, mesh::FourCC type, const char* name) noexcept
    {
        return slot.text == name && slot.map->type == type && same(slot.map->name.c_str(), name);
    }
    /// Compares two texts in place: names are so short that a call would take longer.
    [[nodiscard]] static bool same(const char* a, const char* b) noexcept
    {
        for (; *a == *b; ++a, ++b)
            if (*a == '\0')
                return true;
        return false;
    }
    [[nodiscard]] NamedMap& look_up(mesh::FourCC type, std::string_view name);

    std::deque<NamedMap> maps_; // never moves its elements
    std::unordered_map<Key, NamedMap*, KeyHash> by_name_;
    std::array<Slot, slot_count> slots_{};
};

} // namespace modeler
