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

/// The kind of primitive that a ray hit.
enum class Shape : std::uint8_t { triangle, line, dot };

/// The first intersection of a ray with the scene.
struct Hit {
    std::uint32_t part = 0; ///< index of the part (layer)
    Shape shape = Shape::triangle;
    std::uint32_t number = 0; ///< index of the triangle, line or dot in its part
    float u = 0.0F;           ///< barycentric coordinate of the triangle's second corner
    float v = 0.0F;           ///< barycentric coordinate of the third corner
    double distance = 0.0;    ///< metres from the ray's origin
    Float3 place;             ///< position in scene coordinates
    Float3 normal;            ///< unit geometric normal, facing the ray's origin
};

/// Implementation of Scene: the parts, and the ray tracer's acceleration structure. Thread-safe
/// after construction.
class TracedScene {
public:
    /// See Scene::Scene.
    explicit TracedScene(std::span<const SceneLayer> layers,
                         const std::atomic<bool>* cancel = nullptr);
    TracedScene(const TracedScene&) = delete;
    TracedScene& operator=(const TracedScene&) = delete;
    ~TracedScene();

    [[nodiscard]] const std::vector<ScenePart>& parts() const noexcept { return parts_; }
    [[nodiscard]] const Placement& placement() const noexcept { return placement_; }
    [[nodiscard]] const std::optional<mesh::Bounds>& bounds() const noexcept { return bounds_; }

    /// Traces a ray given in world coordinates.
    [[nodiscard]] std::optional<Hit> trace(const Ray& ray) const noexcept;

    /// Traces a shadow ray from a point on a surface; all arguments are in scene coordinates.
    /// @param normal  side of the surface at which the ray starts
    [[nodiscard]] bool is_blocked(const Float3& place, const Float3& normal,
                                  const Float3& direction) const noexcept;

    /// The polygon of a hit (index in its layer), or `no_polygon`.
    [[nodiscard]] std::uint32_t polygon_of(const Hit& hit) const noexcept;

    /// Converts a position from scene to world coordinates.
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
    std::vector<Geometry> geometries_; ///< by geometry id of the ray tracer
    RTCSceneTy* scene_ = nullptr;
};

} // namespace picture
