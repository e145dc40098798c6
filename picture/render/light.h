// SPDX-License-Identifier: MIT
#pragma once

#include "picture/render/samples.h"
#include "picture/scene/float3.h"
#include "picture/view/view.h"

namespace picture {

/// The light of a picture: a sun over the viewer's left shoulder, soft light from all of the sky,
/// and a little from below. Linear light throughout.
class Light {
public:
    explicit Light(const View& view) noexcept;

    /// A direction towards some place of the sun.
    [[nodiscard]] Float3 towards_sun(Sample2 sample) const noexcept;

    /// A direction into the half space over a surface, the more often the nearer to the normal.
    [[nodiscard]] static Float3 towards_sky(const Float3& normal, Sample2 sample) noexcept;

    [[nodiscard]] static Float3 sun_colour() noexcept { return {1.36F, 1.26F, 1.09F}; }

    /// What comes from a direction in which nothing stands.
    [[nodiscard]] static Float3 sky_colour(const Float3& direction) noexcept;

    /// What comes from a direction in which something stands: a little light is everywhere.
    [[nodiscard]] static Float3 blocked_colour() noexcept { return {0.040F, 0.042F, 0.047F}; }

private:
    Float3 sun_;
    Float3 tangent_; ///< two directions at right angles to the sun's
    Float3 bitangent_;
};

} // namespace picture
