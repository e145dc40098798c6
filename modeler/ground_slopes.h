// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Range of the slopes of the ground's polygons, in degrees: 0 horizontal, 90 vertical, 180 facing
/// down.
struct GroundSlopes {
    double least_deg = 0.0;
    double greatest_deg = 0.0;
};

/// Slopes of the foreground's faces, or only of the selected ones if any polygon is selected.
/// Degenerate faces are ignored. Empty if no face has a slope.
[[nodiscard]] std::optional<GroundSlopes> ground_slopes(const mesh::Document& document,
                                                        const std::vector<LayerRole>& roles);

/// "the ground's polygons slope 0 to 48 degrees": added to the message when a command finds no
/// polygon within its slope limits.
[[nodiscard]] std::string to_sentence(const GroundSlopes& slopes);

} // namespace modeler
