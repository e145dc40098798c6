// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/literal/scene.h"

namespace literal {

/// Reads the weight maps of a scene by their place in the list that a user chooses from.
class WeightReader {
public:
    /// The scene must outlive the reader.
    explicit WeightReader(const Scene& scene) : scene_(scene)
    {
        for (const SceneMap& map : scene.maps) {
            if (map.type == "WGHT") {
                maps_.push_back(&map);
            }
        }
    }

    /// The map of a choice, counting from 1; null for 0 and for a choice that names no map.
    [[nodiscard]] const SceneMap* chosen(std::int32_t choice) const
    {
        std::int32_t number = 0;
        for (const SceneMap* map : maps_) {
            ++number;
            if (number == choice) {
                return map;
            }
        }
        return nullptr;
    }

    /// The mean of a map over a polygon's points, in single precision. A point without a value adds
    /// nothing but counts; a polygon without points gives NaN; no map at all gives 1.
    [[nodiscard]] double mean(std::size_t polygon, const SceneMap* map) const
    {
        if (map == nullptr) {
            return 1.0;
        }
        float sum = 0.0F;
        const std::vector<std::size_t>& points = scene_.polygons[polygon].points;
        for (const std::size_t point : points) {
            const std::vector<float>* value = map->value_at(point);
            if (value != nullptr) {
                sum += (*value)[0];
            }
        }
        return sum / static_cast<float>(points.size());
    }

private:
    const Scene& scene_;
    std::vector<const SceneMap*> maps_;
};

} // namespace literal
