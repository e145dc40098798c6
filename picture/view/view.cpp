// SPDX-License-Identifier: MIT
#include "picture/view/view.h"

#include "picture/view/vectors.h"

namespace picture {

View::View(const Camera& camera, int width, int height) noexcept
    : camera_(camera), width_(width), height_(height), basis_(camera.basis()),
      perspective_(camera.projection == Projection::perspective), eye_(camera.target),
      step_(camera.height / height)
{
    if (perspective_) {
        eye_ = camera.target - basis_.forward * camera.distance();
        step_ /= camera.distance();
    }
}

Ray View::ray(double x, double y) const noexcept
{
    const Vec3 offset =
        basis_.right * ((x - width_ / 2.0) * step_) + basis_.up * ((height_ / 2.0 - y) * step_);
    if (perspective_)
        return {eye_, normalized(basis_.forward + offset), false};
    return {eye_ + offset, basis_.forward, true};
}

std::optional<Projected> View::project(const Vec3& point) const noexcept
{
    const Vec3 relative = point - eye_;
    const double depth = dot(relative, basis_.forward);
    if (perspective_ && !(depth > 0.0))
        return std::nullopt;
    const double step = perspective_ ? step_ * depth : step_;
    return Projected{width_ / 2.0 + dot(relative, basis_.right) / step,
                     height_ / 2.0 - dot(relative, basis_.up) / step, depth};
}

double View::pixel_size(double distance) const noexcept
{
    return perspective_ ? step_ * distance : step_;
}

} // namespace picture
