// SPDX-License-Identifier: MIT
#pragma once

#include "picture/scene/float3.h"

namespace picture {

/// The background of a picture, in linear light: a vertical gradient. The default is neutral and
/// lighter towards the top.
struct Backdrop {
    Float3 upper{0.85F, 0.87F, 0.89F}; ///< colour at the top of the picture
    Float3 lower{0.51F, 0.52F, 0.55F}; ///< colour at the bottom
    Float3 lines{0.12F, 0.13F, 0.15F}; ///< colour of the grid
    bool transparent = false;          ///< alpha 0; `upper` and `lower` are not used

    /// The colour at a height: share 0 is the top, 1 the bottom.
    [[nodiscard]] Float3 at(float share) const noexcept { return mix(upper, lower, share); }
};

} // namespace picture
