// SPDX-License-Identifier: MIT
#pragma once

#include "picture/render/samples.h"
#include "picture/scene/float3.h"
#include "picture/view/view.h"

namespace picture {

/// The lighting of a picture: a sun behind the viewer on the upper left, and diffuse light from the
/// sky with a little from below. All colours are linear.
class Light {
public:
    explicit Light(const View& view) noexcept;

    /// A unit direction to a random point of the sun's disc.
    [[nodiscard]] Float3 towards_sun(Sample2 sample) const noexcept;

    /// A cosine-weighted random unit direction in the hemisphere around the normal.
    [[nodiscard]] static Float3 towards_sky(const Float3& normal, Sample2 sample) noexcept;

    [[nodiscard]] static Float3 sun_colour() noexcept { return {1.36F, 1.26F, 1.09F}; }

    /// Light from a direction that is not blocked.
    [[nodiscard]] static Float3 sky_colour(const Float3& direction) noexcept;

    /// Ambient light from a direction that is blocked.
    [[nodiscard]] static Float3 blocked_colour() noexcept { return {0.040F, 0.042F, 0.047F}; }

private:
    Float3 sun_;
    Float3 tangent_; ///< orthonormal to `sun_`, with `bitangent_`
    Float3 bitangent_;
};

} // namespace picture
