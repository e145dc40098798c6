// SPDX-License-Identifier: MIT
#include "picture/scene/surface_index.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>
#include <unordered_map>

namespace picture {

void SurfaceIndex::set_document(const SceneLayer& layer)
{
    if (layer.tags == tags_ && layer.looks.data() == given_.data() &&
        layer.looks.size() == given_.size())
        return;
    // For duplicate names the first entry counts, both for tags and for looks.
    std::unordered_map<std::string_view, const mesh::SurfaceLook*> looks;
    std::unordered_map<std::string_view, float> cosines;
    for (const mesh::SurfaceLook& look : layer.looks) {
        looks.try_emplace(look.name, &look);
        if (look.smoothing_angle > 0.0)
            cosines.try_emplace(look.name, static_cast<float>(std::cos(
                                               std::min(look.smoothing_angle, std::numbers::pi))));
    }
    looks_.assign(layer.tags->size(), nullptr);
    cosines_.assign(layer.tags->size(), flat);
    for (mesh::TagIndex tag = 0; tag < looks_.size(); ++tag) {
        if (const auto found = looks.find((*layer.tags)[tag]); found != looks.end())
            looks_[tag] = found->second;
        if (const auto found = cosines.find((*layer.tags)[tag]); found != cosines.end())
            cosines_[tag] = found->second;
    }
    tags_ = layer.tags;
    given_ = layer.looks;
}

} // namespace picture
