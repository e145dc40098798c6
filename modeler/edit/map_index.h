// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "mesh/document.h"
#include "modeler/edit/scope.h"

namespace modeler {

/// A type and name of vertex maps, and where maps of it are.
struct NamedMap {
    mesh::FourCC type;
    std::string name;
    std::uint32_t number; ///< of this record, from 0
    bool written = false; ///< the edit has written to a map of it

    /// Position of the map in a layer's list, or none.
    [[nodiscard]] std::optional<std::uint32_t> in_layer(std::uint32_t layer) const noexcept
    {
        const auto place = std::lower_bound(places.begin(), places.end(), std::pair{layer, 0u});
        if (place == places.end() || place->first != layer)
            return std::nullopt;
        return place->second;
    }
    void add_place(std::uint32_t layer, std::uint32_t map);

    /// (layer, position in its list), by ascending layer.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
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
    [[nodiscard]] NamedMap& find(mesh::FourCC type, const char* name);

    /// The record of this number, or null.
    [[nodiscard]] NamedMap* numbered(std::uint64_t number) noexcept;

private:
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

    [[nodiscard]] NamedMap& look_up(mesh::FourCC type, std::string_view name);

    std::deque<NamedMap> maps_; // never moves its elements
    std::unordered_map<Key, NamedMap*, KeyHash> by_name_;
    std::array<Slot, 64> slots_{};
};

} // namespace modeler
