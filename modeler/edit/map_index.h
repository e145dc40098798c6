// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mesh/document.h"
#include "modeler/edit/named_map.h"
#include "modeler/edit/scope.h"
#include "modeler/edit/string_pool.h"

namespace modeler {

/// Finds vertex maps by type and name in the layers that an edit sees.
///
/// Repeated lookups are cached by the address of the name. For a stable string (StringPool) the
/// address identifies the name. For any other string the cached name is compared as well, since the
/// buffer may hold another string by now.
class MapIndex {
public:
    /// Lists the maps of all layers that `scope` sees. Document and `strings` must outlive the
    /// index.
    MapIndex(mesh::Document& document, const Scope& scope, const StringPool& strings);

    /// The record of this type and name; creates one without places if there is none. Valid as long
    /// as the index.
    [[nodiscard]] NamedMap& find(mesh::FourCC type, const char* name)
    {
        NamedMap* const map = find_cached(type, name);
        return map != nullptr ? *map : find_slow(type, name);
    }

    /// Fast lookup: the record if this stable string was looked up before, otherwise null.
    [[nodiscard]] NamedMap* find_cached(mesh::FourCC type, const char* name) const noexcept
    {
        for (std::size_t i = place(type, name) & mask_;; i = (i + 1) & mask_) {
            const Slot& slot = stable_[i];
            if (slot.text == name && slot.type == type)
                return slot.map;
            if (slot.text == nullptr)
                return nullptr;
        }
    }

    /// The record with this NamedMap::number, or null.
    [[nodiscard]] NamedMap* by_number(std::uint64_t number) noexcept;

private:
    struct Slot {
        const char* text = nullptr;
        NamedMap* map = nullptr;
        mesh::FourCC type = 0;
    };
    struct Key {
        mesh::FourCC type;
        std::string_view name; ///< points into the record

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
        // Fibonacci hashing: addresses of names are close together, so use the upper bits.
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name));
        return static_cast<std::size_t>(((address ^ type) * 0x9E3779B97F4A7C15u) >> 32u);
    }
    [[nodiscard]] NamedMap& find_slow(mesh::FourCC type, const char* name);
    [[nodiscard]] NamedMap& look_up(mesh::FourCC type, std::string_view name);
    /// Adds a stable string to the hash table, which does not contain it. May grow the table.
    void insert_stable(const Slot& slot);
    void insert(const Slot& slot) noexcept;

    const StringPool& strings_;
    std::deque<NamedMap> maps_; // never moves its elements
    std::unordered_map<Key, NamedMap*, KeyHash> by_name_;

    // Caches by address: an open-addressing hash table of stable strings, and a direct-mapped cache
    // of recent lookups for the other strings.
    std::vector<Slot> stable_;
    std::size_t mask_;             ///< size of `stable_` (a power of two) minus one
    std::size_t stable_count_ = 0; ///< slots in use; at most half of them
    std::array<Slot, 64> recent_{};
};

} // namespace modeler
