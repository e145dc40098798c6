// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "picture/scene/float3.h"
#include "picture/scene/scene.h"
#include "picture/scene/surface_index.h"

namespace picture {

/// The normals at the corners of a layer's polygons, where their surface asks for smooth shading:
/// the mean over the polygons of the same surface that share the point and meet at less than the
/// surface's smoothing angle, large polygons counting more than small ones.
class CornerNormals {
public:
    /// Uses the layer and the index, which is that of its document, as long as it lives. `scale` is
    /// about how large the mesh is: areas are taken relative to it, so that they fit single
    /// precision. @throws std::bad_alloc
    CornerNormals(const SceneLayer& layer, const SurfaceIndex& surfaces, double scale);

    /// Whether any polygon is smooth at all.
    [[nodiscard]] bool any() const noexcept { return any_; }

    /// Unit normal of the polygon at one of its points.
    [[nodiscard]] Float3 at(std::size_t polygon, std::uint32_t point) const noexcept;

private:
    [[nodiscard]] float cosine_of(std::size_t polygon) const noexcept;
    void find_neighbours();

    const mesh::Layer& layer_;
    std::size_t first_;
    std::size_t end_;
    const SurfaceIndex& surfaces_;
    bool any_ = false;
    std::vector<Float3> areas_;         ///< of each polygon: its normal, as long as its area
    std::vector<std::uint32_t> starts_; ///< of each point: where its polygons begin
    std::vector<std::uint32_t> around_; ///< the polygons of all points
};

} // namespace picture
