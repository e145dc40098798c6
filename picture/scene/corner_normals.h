// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "picture/scene/float3.h"
#include "picture/scene/scene.h"
#include "picture/scene/surface_index.h"

namespace picture {

/// Corner normals of a layer's polygons for smooth shading: the area-weighted mean of the normals
/// of those polygons of the same surface that share the point and meet at less than the surface's
/// smoothing angle.
class CornerNormals {
public:
    /// Layer and index must outlive this object; the index is that of the layer's document.
    /// @param scale  approximate size of the mesh in metres; areas are scaled by it to fit into
    ///               single precision
    /// @throws std::bad_alloc
    CornerNormals(const SceneLayer& layer, const SurfaceIndex& surfaces, double scale);

    /// Whether any polygon has smooth shading.
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
    std::vector<Float3> areas_;         ///< per polygon: normal with the area as its length
    std::vector<std::uint32_t> starts_; ///< per point: index of its first polygon in `around_`
    std::vector<std::uint32_t> around_; ///< the polygons at each point, concatenated
};

} // namespace picture
