// SPDX-License-Identifier: MIT
#include "picture/render/guides.h"

#include <array>
#include <cmath>

#include "picture/view/vectors.h"

namespace picture {

namespace {

constexpr double half_width = 0.55; ///< pixels
constexpr float grid_cover = 0.28F;
constexpr float axis_cover = 0.9F;
constexpr std::array<Float3, 3> axis_colours{
    {{0.62F, 0.03F, 0.03F}, {0.05F, 0.40F, 0.05F}, {0.04F, 0.12F, 0.70F}}};

std::array<double, 3> components(const Vec3& a) { return {a.x, a.y, a.z}; }

/// The axis parallel to a direction; y if there is none.
int facing_axis(const Basis& basis)
{
    if (std::fabs(basis.forward.x) == 1.0)
        return 0;
    return std::fabs(basis.forward.z) == 1.0 ? 2 : 1;
}

} // namespace

Guides::Guides(const View& view, const Look& look) noexcept
    : view_(view), grid_colour_(look.backdrop.lines), grid_(look.grid), axes_(look.axes),
      plane_(facing_axis(view.basis())),
      step_(std::pow(10.0, std::floor(std::log10(view.camera().height / 4.0))))
{}

std::optional<Guides::Line> Guides::along(const Ray& ray, double depth) const noexcept
{
    std::optional<Line> nearest;
    const auto consider = [&](const std::optional<Line>& line) {
        if (line && line->distance < depth && (ray.endless || line->distance > 0.0) &&
            (!nearest || line->distance < nearest->distance))
            nearest = line;
    };
    if (axes_)
        for (int axis = 0; axis < 3; ++axis)
            consider(axis_line(ray, axis));
    if (grid_ && !nearest)
        consider(grid_line(ray));
    return nearest;
}

std::optional<Guides::Line> Guides::grid_line(const Ray& ray) const noexcept
{
    const auto origin = components(ray.origin);
    const auto direction = components(ray.direction);
    const auto plane = static_cast<std::size_t>(plane_);
    const double distance = -origin.at(plane) / direction.at(plane);
    if (!std::isfinite(distance) || (!ray.endless && distance <= 0.0))
        return std::nullopt;
    const double pixel = view_.pixel_size(std::fabs(distance));
    // Towards the horizon grid cells become smaller than pixels: fade the grid out before.
    const double slant = std::fabs(direction.at(plane));
    const double pixels = step_ * slant / pixel;
    const double fade = std::fmin(1.0, (pixels - 3.0) / 12.0);
    if (!(fade > 0.0))
        return std::nullopt;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (axis == plane)
            continue;
        const double place = origin.at(axis) + distance * direction.at(axis);
        const double off = std::fabs(place - step_ * std::round(place / step_));
        // Distance between the ray and the grid line, which is parallel to the third axis.
        const double along = direction.at(3 - plane - axis);
        const double across = std::sqrt(1.0 - along * along);
        if (off * slant < half_width * pixel * across)
            return Line{distance, grid_colour_, grid_cover * static_cast<float>(fade)};
    }
    return std::nullopt;
}

std::optional<Guides::Line> Guides::axis_line(const Ray& ray, int axis) const noexcept
{
    const Vec3 along{axis == 0 ? 1.0 : 0.0, axis == 1 ? 1.0 : 0.0, axis == 2 ? 1.0 : 0.0};
    const Vec3 across = cross(ray.direction, along);
    const double size = length(across);
    if (!(size > 1e-9))
        return std::nullopt;
    // The closest points of the two lines.
    const double distance = -dot(cross(ray.origin, along), across) / (size * size);
    const double gap = std::fabs(dot(ray.origin, across)) / size;
    if (gap > half_width * view_.pixel_size(std::fabs(distance)))
        return std::nullopt;
    return Line{distance, axis_colours.at(static_cast<std::size_t>(axis)), axis_cover};
}

} // namespace picture
