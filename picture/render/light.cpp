// SPDX-License-Identifier: MIT
#include "picture/render/light.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace picture {

namespace {

constexpr float two_pi = 2.0F * std::numbers::pi_v<float>;
constexpr double sun_left_deg = 55.0;
constexpr double sun_height_deg = 42.0;
constexpr float sun_size = 0.02F; ///< radius at distance 1; larger than the real one: softer edges

/// Completes a unit vector to an orthonormal basis.
void across(const Float3& direction, Float3& first, Float3& second)
{
    const Float3 other =
        std::fabs(direction.x) < 0.5F ? Float3{1.0F, 0.0F, 0.0F} : Float3{0.0F, 1.0F, 0.0F};
    first = normalized(cross(other, direction));
    second = cross(direction, first);
}

} // namespace

Light::Light(const View& view) noexcept
{
    constexpr double degree = std::numbers::pi / 180.0;
    const double azimuth = (view.camera().azimuth_deg - sun_left_deg) * degree;
    const double height = sun_height_deg * degree;
    sun_ = to_single({std::sin(azimuth) * std::cos(height), std::sin(height),
                      -std::cos(azimuth) * std::cos(height)});
    across(sun_, tangent_, bitangent_);
}

Float3 Light::towards_sun(Sample2 sample) const noexcept
{
    const float radius = sun_size * std::sqrt(sample.x);
    const float angle = two_pi * sample.y;
    return normalized(sun_ + tangent_ * (radius * std::cos(angle)) +
                      bitangent_ * (radius * std::sin(angle)));
}

Float3 Light::towards_sky(const Float3& normal, Sample2 sample) noexcept
{
    Float3 first;
    Float3 second;
    across(normal, first, second);
    const float radius = std::sqrt(sample.x);
    const float angle = two_pi * sample.y;
    return normalized(first * (radius * std::cos(angle)) + second * (radius * std::sin(angle)) +
                      normal * std::sqrt(std::max(0.0F, 1.0F - sample.x)));
}

Float3 Light::sky_colour(const Float3& direction) noexcept
{
    constexpr Float3 zenith{0.39F, 0.48F, 0.66F};
    constexpr Float3 horizon{0.60F, 0.61F, 0.63F};
    constexpr Float3 below{0.20F, 0.19F, 0.18F};
    if (direction.y >= 0.0F)
        return mix(horizon, zenith, std::sqrt(direction.y));
    return mix(horizon, below, std::min(1.0F, -4.0F * direction.y));
}

} // namespace picture
