// SPDX-License-Identifier: MIT
#include "picture/render/shader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "picture/image/colour.h"
#include "picture/maps/colour_scale.h"
#include "picture/scene/packed_normal.h"

namespace picture {

namespace {

constexpr Float3 selection_tint{1.0F, 0.35F, 0.02F};
constexpr Float3 ghost_tint{0.10F, 0.42F, 1.0F};
constexpr float ghost_cover = 0.72F;
constexpr Float3 edge_colour{0.015F, 0.015F, 0.02F};
constexpr float edge_cover = 0.8F;
constexpr double edge_half_width = 0.6; ///< pixels
constexpr Float3 line_colour{0.03F, 0.03F, 0.04F};

ShadedSample lay_over(const ShadedSample& below, const Float3& colour, float cover)
{
    return {mix(below.light, colour, cover), below.cover + (1.0F - below.cover) * cover};
}

/// The shading normal, facing the viewer: interpolated on smooth surfaces.
Float3 shading_normal(const ScenePart& part, const Hit& hit)
{
    if (hit.shape != Shape::triangle || part.corner_normals.empty())
        return hit.normal;
    const auto& [a, b, c] = part.corner_normals[hit.number];
    Float3 normal = unpack_normal(a) * (1.0F - hit.u - hit.v) + unpack_normal(b) * hit.u +
                    unpack_normal(c) * hit.v;
    // The ray may have hit the back of the polygon.
    const auto& [p, q, r] = part.triangles[hit.number];
    const Float3 front = cross(part.points[q] - part.points[p], part.points[r] - part.points[p]);
    if (dot(front, hit.normal) < 0.0F)
        normal = -normal;
    normal = normalized(normal);
    return dot(normal, normal) > 0.0F ? normal : hit.normal;
}

/// The origin of shadow rays for a hit on a smooth surface: on the curved surface implied by the
/// corner normals, not on the flat triangle, to avoid the shadow terminator artefact (J. Hanika,
/// "Hacking the shadow terminator", 2021).
Float3 rounded_place(const ScenePart& part, const Hit& hit)
{
    if (hit.shape != Shape::triangle || part.corner_normals.empty())
        return hit.place;
    const std::array<float, 3> shares{1.0F - hit.u - hit.v, hit.u, hit.v};
    Float3 lift;
    for (std::size_t i = 0; i < 3; ++i) {
        const Float3 normal = unpack_normal(part.corner_normals[hit.number].at(i));
        const Float3& corner = part.points[part.triangles[hit.number].at(i)];
        const float below = dot(hit.place - corner, normal);
        const float side = dot(normal, hit.normal) < 0.0F ? -1.0F : 1.0F;
        lift = lift - normal * (std::min(0.0F, below * side) * side * shares.at(i));
    }
    return hit.place + lift;
}

} // namespace

Shader::Shader(std::shared_ptr<const Scene> scene, const View& view, Look look)
    : scene_(std::move(scene)), view_(view), look_(std::move(look)), light_(view),
      guides_(view, look_)
{}

ShadedSample Shader::background_at(double y) const noexcept
{
    if (look_.backdrop.transparent)
        return {{}, 0.0F};
    return {look_.backdrop.at(static_cast<float>(y / view_.height())), 1.0F};
}

ShadedSample Shader::sample(double x, double y, const Samples& samples) const noexcept
{
    const Ray ray = view_.ray(x, y);
    const TracedScene& scene = scene_->traced();
    ShadedSample seen = background_at(y);
    double depth = std::numeric_limits<double>::infinity();
    if (const auto hit = scene.trace(ray)) {
        seen = {lit(scene, *hit, colour_of(*hit), samples), 1.0F};
        if (look_.wireframe && is_on_edge(*hit, ray))
            seen = lay_over(seen, edge_colour, edge_cover);
        depth = hit->distance;
    }
    const auto guide = guides_.along(ray, depth);
    const bool guide_seen = guide.has_value();
    bool guide_done = !guide_seen;
    if (look_.ghost) {
        const TracedScene& ghost = look_.ghost->traced();
        if (const auto hit = ghost.trace(ray); hit && hit->distance < depth) {
            if (guide_seen && guide->distance > hit->distance) {
                seen = lay_over(seen, guide->colour, guide->cover);
                guide_done = true;
            }
            seen = lay_over(seen, lit(ghost, *hit, ghost_tint, samples), ghost_cover);
        }
    }
    return guide_done ? seen : lay_over(seen, guide->colour, guide->cover);
}

Float3 Shader::lit(const TracedScene& scene, const Hit& hit, const Float3& colour,
                   const Samples& samples) const noexcept
{
    const ScenePart& part = scene.parts()[hit.part];
    const Float3 normal = shading_normal(part, hit);
    const Float3 place = rounded_place(part, hit);
    Float3 light;
    const Float3 sun = light_.towards_sun(samples.draw(SampleUse::sun));
    const float slant = dot(normal, sun);
    if (slant > 0.0F && !scene.is_blocked(place, hit.normal, sun))
        light = Light::sun_colour() * slant;
    const Float3 sky = Light::towards_sky(normal, samples.draw(SampleUse::sky));
    const bool blocked = dot(hit.normal, sky) <= 0.0F || scene.is_blocked(place, hit.normal, sky);
    light = light + (blocked ? Light::blocked_colour() : Light::sky_colour(sky));
    return colour * light;
}

Float3 Shader::colour_of(const Hit& hit) const noexcept
{
    const TracedScene& scene = scene_->traced();
    const std::uint32_t polygon = scene.polygon_of(hit);
    Float3 colour = line_colour;
    if (look_.map)
        colour = map_colour(hit);
    else if (hit.shape == Shape::triangle) {
        const ScenePart& part = scene.parts()[hit.part];
        colour = part.colours[part.surfaces[polygon]];
    }
    return is_selected(hit) ? mix(colour, selection_tint, 0.7F) : colour;
}

Float3 Shader::map_colour(const Hit& hit) const noexcept
{
    if (hit.shape != Shape::triangle)
        return line_colour;
    const ScenePart& part = scene_->traced().parts()[hit.part];
    const std::uint32_t polygon = part.triangle_polygons[hit.number];
    const std::array<float, 3> shares{1.0F - hit.u - hit.v, hit.u, hit.v};
    float value = 0.0F;
    for (std::size_t i = 0; i < 3; ++i) {
        const std::uint32_t point = part.triangles[hit.number].at(i);
        if (point < part.layer_points) {
            value += shares.at(i) * value_at(*look_.map, hit.part, polygon, point);
            continue;
        }
        const AddedPoint& added = part.added[point - part.layer_points];
        for (std::size_t j = 0; j < added.corners.size(); ++j)
            if (added.shares.at(j) > 0.0F)
                value += shares.at(i) * added.shares.at(j) *
                         value_at(*look_.map, hit.part, polygon, added.corners.at(j));
    }
    return scale_colour(*look_.map, value);
}

bool Shader::is_selected(const Hit& hit) const noexcept
{
    if (!look_.selected || hit.part >= look_.selected->size())
        return false;
    const std::vector<std::uint8_t>& marks = (*look_.selected)[hit.part];
    const std::uint32_t polygon = scene_->traced().polygon_of(hit);
    return polygon < marks.size() && marks[polygon] != 0;
}

/// Whether the ray passes an edge of the polygon within half the line width.
bool Shader::is_on_edge(const Hit& hit, const Ray& ray) const noexcept
{
    if (hit.shape != Shape::triangle)
        return false;
    const TracedScene& scene = scene_->traced();
    const ScenePart& part = scene.parts()[hit.part];
    const std::uint8_t edges = part.triangle_edges[hit.number];
    const auto width = static_cast<float>(edge_half_width * view_.pixel_size(hit.distance) /
                                          scene.placement().scale);
    const Float3 direction = to_single(ray.direction);
    for (std::size_t i = 0; i < 3; ++i) {
        if ((edges >> i & 1U) == 0)
            continue;
        const auto& corners = part.triangles[hit.number];
        const Float3& from = part.points[corners.at(i)];
        const Float3 across =
            normalized(cross(direction, part.points[corners.at((i + 1) % 3)] - from));
        if (std::fabs(dot(from - hit.place, across)) < width)
            return true;
    }
    return false;
}

} // namespace picture
