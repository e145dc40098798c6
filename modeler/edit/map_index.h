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

/// Finds the maps of a type and name in the layers that an edit sees.
///
/// The same name asked for again costs next to nothing: a caller gives a name by the address of its
/// text, so the address leads to the answer. Of a lasting text the address says all. Of another it
/// proves nothing, since there may be another text by now: these are compared.
class MapIndex {
public:
    /// Lists the maps of all layers that `scope` sees. `texts` must outlive the index.
    MapIndex(mesh::Document& document, const Scope& scope, const StringPool& strings);

    /// The record of this type and name, made where there was none: it then has no places. Valid as
    /// long as the index.
    [[nodiscard]] NamedMap& find(mesh::FourCC type, const char* name)
    {
        NamedMap* const map = find_cached(type, name);
        return map != nullptr ? *map : find_slow(type, name);
    }

    /// The same record, where a lasting text led to it before; otherwise null.
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

    /// The record of this number, or null.
    [[nodiscard]] NamedMap* by_number(std::uint64_t number) noexcept;

private:
    struct Slot {
        const char* text = nullptr;
        NamedMap* map = nullptr;
        mesh::FourCC type = 0;
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
        // Names lie near each other, so the product's upper bits are those that tell them apart.
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(name));
        return static_cast<std::size_t>(((address ^ type) * 0x9E3779B97F4A7C15u) >> 32u);
    }
    [[nodiscard]] NamedMap& find_slow(mesh::FourCC type, const char* name);
    [[nodiscard]] NamedMap& look_up(mesh::FourCC type, std::string_view name);
    /// Notes where a lasting text led to, one that is not noted so far.
    void insert_stable(const Slot& slot);
    void insert(const Slot& slot) noexcept;

    const StringPool& strings_;
    std::deque<NamedMap> maps_; // never moves its elements
    std::unordered_map<Key, NamedMap*, KeyHash> by_name_;

    // By the address of the text: a table of the lasting ones, each at its place or at the next
    // that was free, and the last answer for each of the others that may come again.
    std::vector<Slot> stable_;
    std::size_t mask_;             ///< the size of that table, a power of two, less one
    std::size_t stable_count_ = 0; ///< slots that are taken, at most half of them
    std::array<Slot, 64> recent_{};
};

} // namespace modeler
