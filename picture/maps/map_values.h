// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "picture/scene/scene.h"

namespace picture {

/// A value that holds at one corner of one polygon in place of the point's.
struct CornerValue {
    std::uint32_t polygon = 0;
    std::uint32_t point = 0;
    float value = 0.0F;
};

/// The values of one vertex map of one dimension over the layers of a scene.
struct MapValues {
    struct LayerValues {
        std::vector<float> of_point;      ///< not-a-number: the point has none; empty: no point has
        std::vector<CornerValue> corners; ///< in ascending order of polygons, then points
    };

    std::string name;
    std::vector<LayerValues> layers; ///< one for each layer of the scene
    float lowest = 0.0F;
    float highest = 0.0F;
    std::vector<float> steps; ///< all different values, ascending, where every polygon has one
                              ///< value throughout and there are three or more: such a map numbers
                              ///< things, which are told apart by their colours. Else empty
};

/// The names of the vertex maps that can be shown (weight maps, and others of one dimension), each
/// once, in order of appearance.
[[nodiscard]] std::vector<std::string> map_names(std::span<const SceneLayer> layers);

/// The values of the maps of this name; none when no layer has one. A weight map is taken before
/// one of another type. The layers are those, in their order, that the scene is made of.
[[nodiscard]] std::shared_ptr<const MapValues> read_map(std::span<const SceneLayer> layers,
                                                        std::string_view name);

/// The value that holds at a polygon's corner; not-a-number where there is none.
[[nodiscard]] float value_at(const MapValues& map, std::uint32_t layer, std::uint32_t polygon,
                             std::uint32_t point) noexcept;

} // namespace picture
