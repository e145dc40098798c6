// SPDX-License-Identifier: MIT
#include "modeler/host/map_catalog.h"

#include <unordered_set>

#include "modeler/host/activation.h"

namespace modeler {

std::span<const char* const> MapCatalog::names(Activation& activation, mesh::FourCC type)
{
    const auto known = lists_.find(type);
    if (known != lists_.end())
        return known->second;
    return lists_.emplace(type, listed(activation, type)).first->second;
}

std::vector<const char*> MapCatalog::listed(Activation& activation, mesh::FourCC type)
{
    std::vector<const char*> names;
    std::unordered_set<const char*> seen; // one address for each text
    const MeshEdit* const edit = activation.open_edit();
    const auto& layers = activation.document().layers;
    for (const LayerRole role : {LayerRole::foreground, LayerRole::background}) {
        for (std::size_t i = 0; i < layers.size(); ++i) {
            if (activation.roles()[i] != role)
                continue;
            const auto& maps = layers[i].maps;
            const std::size_t count = edit != nullptr ? edit->mark().maps(i) : maps.size();
            for (std::size_t m = 0; m < count; ++m) {
                if (maps[m].type() != type)
                    continue;
                const char* const name = activation.strings().intern(maps[m].name());
                if (seen.insert(name).second)
                    names.push_back(name);
            }
        }
    }
    return names;
}

} // namespace modeler
