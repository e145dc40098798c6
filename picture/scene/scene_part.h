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

/// Where the scene's own coordinates lie in the world: its middle is at 0 and its largest extent
/// reaches from -1 to 1, so that single precision serves any place and size.
struct Placement {
    mesh::Vec3 centre;
    double scale = 1.0; ///< metres to one unit of the scene
};

constexpr std::uint32_t no_polygon = 0xFFFFFFFFU;

/// A place with a radius around it.
struct Ball {
    Float3 centre;
    float radius = 0.0F;
};

/// One layer of a scene, as it is traced.
struct ScenePart {
    /// The layer's points, then those that splitting added. A point that is not shown is
    /// not-a-number. One more point of no meaning ends the array: the tracer reads 16 bytes at a
    /// time.
    std::vector<Float3> points;
    std::uint32_t layer_points = 0; ///< how many of them are the layer's
    std::vector<AddedPoint> added;  ///< what the others are mixed of; corners are points

    std::vector<std::array<std::uint32_t, 3>> triangles;
    std::vector<std::uint32_t> triangle_polygons;             ///< polygon of each triangle
    std::vector<std::uint8_t> triangle_edges;                 ///< as Piece::edges
    std::vector<std::array<std::uint32_t, 3>> corner_normals; ///< packed; empty: all flat

    std::vector<Ball> line_points;
    std::vector<std::uint32_t> lines; ///< first point of each; it ends at the next
    std::vector<std::uint32_t> line_polygons;

    std::vector<Ball> dots;
    std::vector<std::uint32_t> dot_polygons; ///< or `no_polygon`

    std::vector<std::uint32_t> surfaces; ///< of each polygon: position in `colours`
    std::vector<Float3> colours;         ///< linear light
};

/// Makes the part of a layer. `surfaces` is the index of its document, `cancel` as that of a scene.
/// @throws std::bad_alloc, SceneCancelled
[[nodiscard]] ScenePart make_part(const SceneLayer& layer, const SurfaceIndex& surfaces,
                                  const Placement& placement,
                                  const std::atomic<bool>* cancel = nullptr);

/// Which points of a layer are seen: those of the polygons shown, and loose ones.
[[nodiscard]] std::vector<bool> shown_points(const SceneLayer& layer);

/// The last polygon that is shown, plus one.
[[nodiscard]] std::size_t end_polygon(const SceneLayer& layer) noexcept;

} // namespace picture
