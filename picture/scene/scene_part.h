// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "mesh/vec3.h"
#include "picture/scene/float3.h"
#include "picture/scene/polygon_splitter.h"
#include "picture/scene/scene.h"
#include "picture/scene/surface_index.h"

namespace picture {

/// Transform between world and scene coordinates. In scene coordinates the centre is at 0 and the
/// largest extent is -1 to 1, so that single precision suffices for any position and size.
struct Placement {
    mesh::Vec3 centre;
    double scale = 1.0; ///< metres per scene unit
};

constexpr std::uint32_t no_polygon = 0xFFFFFFFFU;

/// A sphere.
struct Ball {
    Float3 centre;
    float radius = 0.0F;
};

/// One layer of a scene in the form used for ray tracing.
struct ScenePart {
    /// The layer's points, then those added by splitting. Points that are not shown are NaN. The
    /// array ends with one unused point as padding, because the tracer reads 16 bytes at a time.
    std::vector<Float3> points;
    std::uint32_t layer_points = 0; ///< number of the layer's points
    std::vector<AddedPoint> added; ///< interpolation of the added points; corners are point indices

    std::vector<std::array<std::uint32_t, 3>> triangles;
    std::vector<std::uint32_t> triangle_polygons;             ///< polygon of each triangle
    std::vector<std::uint8_t> triangle_edges;                 ///< see Piece::edges
    std::vector<std::array<std::uint32_t, 3>> corner_normals; ///< packed; empty: flat shading

    std::vector<Ball> line_points;
    std::vector<std::uint32_t> lines; ///< segments: index of the first point; the next one ends it
    std::vector<std::uint32_t> line_polygons;

    std::vector<Ball> dots;
    std::vector<std::uint32_t> dot_polygons; ///< polygon of each dot, or `no_polygon`

    std::vector<std::uint32_t> surfaces; ///< per polygon: index in `colours`
    std::vector<Float3> colours;         ///< linear light
};

/// Builds the part of a layer.
/// @param surfaces  index of the layer's document
/// @param cancel    set to true to cancel; may be null
/// @throws std::bad_alloc, SceneCancelled
[[nodiscard]] ScenePart make_part(const SceneLayer& layer, const SurfaceIndex& surfaces,
                                  const Placement& placement,
                                  const std::atomic<bool>* cancel = nullptr);

/// Per point of a layer, whether it is shown: points of shown polygons, and loose points.
[[nodiscard]] std::vector<bool> shown_points(const SceneLayer& layer);

/// One past the last polygon that is shown.
[[nodiscard]] std::size_t end_polygon(const SceneLayer& layer) noexcept;

} // namespace picture
