// SPDX-License-Identifier: MIT
#include "modeler/background_layers.h"

#include <cstddef>

namespace modeler {

std::vector<const mesh::Layer*> background_layers(const mesh::Document& document,
                                                  std::span<const LayerRole> roles)
{
    std::vector<const mesh::Layer*> layers;
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] == LayerRole::background)
            layers.push_back(&document.layers[i]);
    return layers;
}

} // namespace modeler
