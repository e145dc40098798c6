// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Angles between the ground's polygons and the level: 0 level, 90 upright, 180 facing down.
struct GroundSlopes {
    double least_deg = 0.0;
    double greatest_deg = 0.0;
};

/// Slopes of the foreground's faces, or of the selected ones where some polygons are. Faces without
/// an area have no slope. Empty when no face has one.
[[nodiscard]] std::optional<GroundSlopes> ground_slopes(const mesh::Document& document,
                                                        const std::vector<LayerRole>& roles);

/// "the ground's polygons slope 0 to 48 degrees", to stand beside a refusal of a command that found
/// no polygon within its limits.
[[nodiscard]] std::string to_sentence(const GroundSlopes& slopes);

} // namespace modeler
