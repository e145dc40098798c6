// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "mesh/document.h"
#include "modeler/edit/lasting_texts.h"
#include "modeler/edit/named_map.h"
#include "modeler/edit/scope.h"

namespace modeler {

/// Finds the maps of a type and name in the layers that an edit sees.
///
/// The same name asked for again costs next to nothing: a caller gives a name by the address of its
/// text, so the address leads to the last answer. Of a lasting text the address says all. Of
/// another it proves nothing, since there may be another text by now: these are compared.
class MapIndex {
public:
    /// Lists the maps of all layers that `scope` sees. `texts` must outlive the index.
    MapIndex(mesh::Document& document, const Scope& scope, const LastingTexts& texts);

    /// The record of this type and name, made where there was none: it then has no places. Valid as
    /// long as the index.
    [[nodiscard]] NamedMap& find(mesh::FourCC type, const char* name)
    {
        Slot& slot = slots_[place(type, name)];
        if (!holds(slot, type, name))
            slot = {name, &look_up(type, name), type, texts_.holds(name)};
        return *slot.map;
    }

    /// The same record, where a lasting text led to it before; otherwise null.
    [[nodiscard]] NamedMap* known(mesh::FourCC type, const char* name) const noexcept
    {
        const Slot& slot = slots_[place(type, name)];
        return slot.text == name && slot.type == type && slot.lasts ? slot.map : nullptr;
    }

    /// The record of this number, or null.
    [[nodiscard]] NamedMap* numbered(std::uint64_t number) noexcept;

private:
    static constexpr std::size_t slot_count = 64;
    struct Slot {
        const char* text = nullptr;
        NamedMap* map = nullptr;
        mesh::FourCC type = 0;
        bool lasts = false;
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
        return ((address >> 4) ^ type) % slot_count;
    }
    [[nodiscard]] static bool holds(const Slot& slot, mesh::FourCC type, const char* name) noexcept
    {
        return slot.text == name && slot.type == type &&
               (slot.lasts || std::strcmp(slot.map->name.c_str(), name) == 0);
    }
    [[nodiscard]] NamedMap& look_up(mesh::FourCC type, std::string_view name);

    const LastingTexts& texts_;
    std::deque<NamedMap> maps_; // never moves its elements
    std::unordered_map<Key, NamedMap*, KeyHash> by_name_;
    std::array<Slot, slot_count> slots_{};
};

} // namespace modeler
