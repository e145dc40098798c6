// SPDX-License-Identifier: MIT
#include "picture/view/camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "picture/view/vectors.h"

namespace picture {

namespace {

constexpr double margin = 1.1; ///< how much larger the picture is than what it has to show

double radians(double degrees) { return degrees * (std::numbers::pi / 180.0); }

double slope_of(const Camera& camera) { return std::tan(radians(camera.field_of_view_deg) / 2.0); }

/// Sine and cosine, exact at the standard views.
void turn(double degrees, double& sine, double& cosine)
{
    sine = std::sin(radians(degrees));
    cosine = std::cos(radians(degrees));
    if (std::fmod(degrees, 90.0) == 0.0) {
        sine = std::round(sine);
        cosine = std::round(cosine);
    }
}

} // namespace

void Camera::look_from(StandardView view) noexcept
{
    projection =
        view == StandardView::perspective ? Projection::perspective : Projection::orthographic;
    elevation_deg = 0.0;
    azimuth_deg = 0.0;
    switch (view) {
    case StandardView::perspective:
        azimuth_deg = Camera().azimuth_deg;
        elevation_deg = Camera().elevation_deg;
        break;
    case StandardView::front:
        azimuth_deg = 180.0;
        break;
    case StandardView::back:
        break;
    case StandardView::left:
        azimuth_deg = 270.0;
        break;
    case StandardView::right:
        azimuth_deg = 90.0;
        break;
    case StandardView::top:
        elevation_deg = 90.0;
        break;
    case StandardView::bottom:
        elevation_deg = -90.0;
        break;
    }
}

void Camera::frame(std::span<const Vec3> points, double aspect) noexcept
{
    Framing framing(*this, aspect);
    for (const Vec3& point : points)
        framing.add(point);
    framing.apply(*this);
}

void Camera::frame(const mesh::Bounds& bounds, double aspect) noexcept
{
    Framing framing(*this, aspect);
    for (int corner = 0; corner < 8; ++corner)
        framing.add({(corner & 1) != 0 ? bounds.max.x : bounds.min.x,
                     (corner & 2) != 0 ? bounds.max.y : bounds.min.y,
                     (corner & 4) != 0 ? bounds.max.z : bounds.min.z});
    framing.apply(*this);
}

Basis Camera::basis() const noexcept
{
    double sine = 0.0;
    double cosine = 0.0;
    turn(azimuth_deg, sine, cosine);
    double rise = 0.0;
    double level = 0.0;
    turn(elevation_deg, rise, level);
    const Vec3 right{cosine, 0.0, sine};
    const Vec3 forward{-sine * level, -rise, cosine * level};
    return {right, cross(forward, right), forward};
}

double Camera::distance() const noexcept { return height / 2.0 / slope_of(*this); }

Framing::Framing(const Camera& camera, double aspect) noexcept
    : basis_(camera.basis()), perspective_(camera.projection == Projection::perspective),
      aspect_(aspect), slope_(perspective_ ? slope_of(camera) / margin : 0.0)
{}

void Framing::add(const Vec3& point) noexcept
{
    if (!is_finite(point))
        return;
    if (!any_)
        origin_ = point;
    const Vec3 relative = point - origin_;
    const double x = dot(relative, basis_.right);
    const double y = dot(relative, basis_.up);
    const double z = dot(relative, basis_.forward);
    // The intersections with depth 0 of the view planes through the point.
    const double wide = slope_ * aspect_ * z;
    const double high = slope_ * z;
    if (!any_) {
        any_ = true;
        return;
    }
    across_ = {std::min(across_.low, x + wide), std::max(across_.high, x - wide)};
    along_ = {std::min(along_.low, y + high), std::max(along_.high, y - high)};
    depth_ = {std::min(depth_.low, z), std::max(depth_.high, z)};
}

void Framing::apply(Camera& camera) const noexcept
{
    if (!any_)
        return;
    const double x = (across_.low + across_.high) / 2.0;
    const double y = (along_.low + along_.high) / 2.0;
    const double z = (depth_.low + depth_.high) / 2.0;
    camera.target = origin_ + basis_.right * x + basis_.up * y + basis_.forward * z;
    const double seen = std::max(along_.high - along_.low, (across_.high - across_.low) / aspect_);
    // With perspective, the view planes diverge with the depth: convert their distance from depth 0
    // to the depth of the target.
    camera.height = perspective_ ? margin * (seen + 2.0 * slope_ * z) : margin * seen;
    if (!(camera.height > 0.0) || !std::isfinite(camera.height))
        camera.height = 1.0;
}

} // namespace picture
