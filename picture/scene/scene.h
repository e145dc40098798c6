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

/// The ray tracer could not do its work, mostly for want of threads. The message says why.
class TracerError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One layer to be shown, or a run of its polygons. What it points to is used only while a scene is
/// being made of it.
struct SceneLayer {
    const mesh::Layer* layer = nullptr;
    const mesh::TagList* tags = nullptr;      ///< of the layer's document
    std::span<const mesh::SurfaceLook> looks; ///< of the document's surfaces
    std::size_t first_polygon = 0;
    std::size_t end_polygon = std::numeric_limits<std::size_t>::max(); ///< or the layer's last
    bool loose_points = true; ///< points of no polygon are shown as dots
};

/// All layers of a document, in order. Points into both arguments.
[[nodiscard]] std::vector<SceneLayer> all_layers(const mesh::Document& document,
                                                 std::span<const mesh::SurfaceLook> looks);

/// A polygon of a scene.
struct PolygonId {
    std::uint32_t layer = 0;   ///< position among the layers that the scene was made of
    std::uint32_t polygon = 0; ///< index in that layer, from its very first polygon

    friend bool operator==(const PolygonId&, const PolygonId&) = default;
    friend bool operator<(const PolygonId& a, const PolygonId& b) noexcept
    {
        return a.layer != b.layer ? a.layer < b.layer : a.polygon < b.polygon;
    }
};

/// The making of a scene was given up, as its caller asked.
class SceneCancelled : public std::exception {};

/// Some layers, made ready to be looked at: triangles in single precision around the scene's own
/// middle and size, sorted in space for tracing. Holds copies of all it needs, and never changes:
/// any number of threads may use it at a time.
///
/// Polygons of three or more points are faces, patches by their control polygons; polygons of two
/// points and bones are thin lines, curves as well; polygons of one point are dots, and so are
/// points of no polygon. What has a coordinate that is no finite number is left out.
class Scene {
public:
    /// Uses all cores.
    /// @param cancel  once true, the making is given up soon; may be null
    /// @throws std::bad_alloc, TracerError, SceneCancelled
    explicit Scene(std::span<const SceneLayer> layers, const std::atomic<bool>* cancel = nullptr);
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;
    ~Scene();

    /// Box around everything there is to see; none when there is nothing.
    [[nodiscard]] const std::optional<mesh::Bounds>& bounds() const noexcept;

    /// The camera, moved so that it just sees everything. Unchanged when there is nothing.
    [[nodiscard]] Camera framed(Camera camera, double aspect) const noexcept;

    /// Triangles that the faces were split into.
    [[nodiscard]] std::size_t triangle_count() const noexcept;

    /// For the room's own use.
    [[nodiscard]] const TracedScene& traced() const noexcept { return *traced_; }

private:
    std::unique_ptr<const TracedScene> traced_;
};

} // namespace picture
