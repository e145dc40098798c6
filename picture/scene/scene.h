// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <vector>

#include "mesh/bounds.h"
#include "mesh/document.h"
#include "mesh/surface_look.h"
#include "picture/view/camera.h"

namespace picture {

class TracedScene;

/// The ray tracer failed, usually because it could not start threads. The message gives the reason.
class TracerError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A layer to be shown, or a range of its polygons. The pointers must be valid while a scene is
/// built from it, and not longer.
struct SceneLayer {
    const mesh::Layer* layer = nullptr;
    const mesh::TagList* tags = nullptr;      ///< tags of the layer's document
    std::span<const mesh::SurfaceLook> looks; ///< surfaces of the document
    std::size_t first_polygon = 0;
    std::size_t end_polygon = std::numeric_limits<std::size_t>::max(); ///< exclusive; clamped
    bool loose_points = true; ///< show points without a polygon as dots
};

/// All layers of a document, in order. The result points into both arguments.
[[nodiscard]] std::vector<SceneLayer> all_layers(const mesh::Document& document,
                                                 std::span<const mesh::SurfaceLook> looks);

/// A polygon of a scene.
struct PolygonId {
    std::uint32_t layer = 0;   ///< index among the layers from which the scene was built
    std::uint32_t polygon = 0; ///< index in the mesh layer (not relative to `first_polygon`)

    friend bool operator==(const PolygonId&, const PolygonId&) = default;
    friend bool operator<(const PolygonId& a, const PolygonId& b) noexcept
    {
        return a.layer != b.layer ? a.layer < b.layer : a.polygon < b.polygon;
    }
};

/// Building a scene was cancelled by its caller.
class SceneCancelled : public std::exception {};

/// Layers prepared for ray tracing: triangles in single precision, relative to the centre and size
/// of the scene, in a bounding volume hierarchy. Copies all data; immutable and thread-safe.
///
/// Polygons of three or more points are drawn as faces (patches by their control polygons);
/// polygons of two points, bones and curves as thin lines; polygons of one point, and points
/// without a polygon, as dots. Elements with a non-finite coordinate are omitted.
class Scene {
public:
    /// Builds the scene on all cores.
    /// @param cancel  set to true to cancel; may be null
    /// @throws std::bad_alloc, TracerError, SceneCancelled
    explicit Scene(std::span<const SceneLayer> layers, const std::atomic<bool>* cancel = nullptr);
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    /// Bounding box of everything visible; empty for an empty scene.
    [[nodiscard]] const std::optional<mesh::Bounds>& bounds() const noexcept;

    /// The camera, moved to frame the whole scene. Unchanged for an empty scene.
    /// @param aspect  width of the picture divided by its height
    [[nodiscard]] Camera framed(Camera camera, double aspect) const noexcept;

    /// Number of triangles.
    [[nodiscard]] std::size_t triangle_count() const noexcept;

    /// Internal representation, for use within picture/ only.
    [[nodiscard]] const TracedScene& traced() const noexcept { return *traced_; }

private:
    std::unique_ptr<const TracedScene> traced_;
};

} // namespace picture
