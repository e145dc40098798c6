// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "picture/scene/scene_part.h"
#include "picture/view/view.h"

struct RTCSceneTy;

namespace picture {

/// What kind of thing a line of sight met.
enum class Shape : std::uint8_t { triangle, line, dot };

/// Where a line of sight meets the scene first.
struct Hit {
    std::uint32_t part = 0; ///< number of the layer
    Shape shape = Shape::triangle;
    std::uint32_t number = 0; ///< of the triangle, line or dot in its part
    float u = 0.0F;           ///< share of the triangle's second corner
    float v = 0.0F;           ///< share of its third
    double distance = 0.0;    ///< metres from the ray's origin
    Float3 place;             ///< in the scene's coordinates
    Float3 normal;            ///< of length 1, towards where the ray came from
};

/// The insides of a scene: its parts, and the tracer's tree over them. Rays within the scene are in
/// its own coordinates.
class TracedScene {
public:
    /// As a scene is made.
    explicit TracedScene(std::span<const SceneLayer> layers,
                         const std::atomic<bool>* cancel = nullptr);
    TracedScene(const TracedScene&) = delete;
    TracedScene& operator=(const TracedScene&) = delete;
    ~TracedScene();

    [[nodiscard]] const std::vector<ScenePart>& parts() const noexcept { return parts_; }
    [[nodiscard]] const Placement& placement() const noexcept { return placement_; }
    [[nodiscard]] const std::optional<mesh::Bounds>& bounds() const noexcept { return bounds_; }

    /// Follows a line of sight.
    [[nodiscard]] std::optional<Hit> trace(const Ray& ray) const noexcept;

    /// Whether anything lies in a direction from a place on the scene. `normal` is the side of the
    /// surface to start from.
    [[nodiscard]] bool is_blocked(const Float3& place, const Float3& normal,
                                  const Float3& direction) const noexcept;

    /// The polygon of a hit, or `no_polygon`.
    [[nodiscard]] std::uint32_t polygon_of(const Hit& hit) const noexcept;

    /// The place in the mesh's own axes.
    [[nodiscard]] mesh::Vec3 world_place(const Float3& place) const noexcept;

private:
    struct Geometry {
        std::uint32_t part;
        Shape shape;
    };

    void place(std::span<const SceneLayer> layers);
    void build(const std::atomic<bool>* cancel);

    Placement placement_;
    std::optional<mesh::Bounds> bounds_;
    std::vector<ScenePart> parts_;
    std::vector<Geometry> geometries_; ///< by the tracer's number
    RTCSceneTy* scene_ = nullptr;
};

} // namespace picture
