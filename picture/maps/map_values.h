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

/// A value that overrides the point's value at one corner of one polygon.
struct CornerValue {
    std::uint32_t polygon = 0;
    std::uint32_t point = 0;
    float value = 0.0F;
};

/// The values of one vertex map of dimension 1 over the layers of a scene.
struct MapValues {
    struct LayerValues {
        std::vector<float> of_point;      ///< NaN: the point has no value; empty: no point has one
        std::vector<CornerValue> corners; ///< sorted by polygon, then point
    };

    std::string name;
    std::vector<LayerValues> layers; ///< one per layer of the scene
    float lowest = 0.0F;
    float highest = 0.0F;
    std::vector<float> steps; ///< the distinct values, ascending, if the value is constant on every
                              ///< polygon and there are three or more: such a map numbers objects,
                              ///< and each gets a distinct colour. Otherwise empty
};

/// The names of the vertex maps that can be shown (weight maps and others of dimension 1), each
/// once, in order of first appearance.
[[nodiscard]] std::vector<std::string> map_names(std::span<const SceneLayer> layers);

/// Reads the values of the maps of this name; null if no layer has one. Prefers weight maps over
/// other types. `layers` must be those of the scene, in the same order.
[[nodiscard]] std::shared_ptr<const MapValues> read_map(std::span<const SceneLayer> layers,
                                                        std::string_view name);

/// The value at a polygon's corner; NaN if there is none.
[[nodiscard]] float value_at(const MapValues& map, std::uint32_t layer, std::uint32_t polygon,
                             std::uint32_t point) noexcept;

} // namespace picture
