// SPDX-License-Identifier: MIT
#pragma once

#include "picture/scene/float3.h"

namespace picture {

/// What is seen where nothing is, in linear light. As it stands: neutral, lighter towards the upper
/// edge.
struct Backdrop {
    Float3 upper{0.85F, 0.87F, 0.89F}; ///< at the upper edge of the picture
    Float3 lower{0.51F, 0.52F, 0.55F}; ///< at the lower edge
    Float3 lines{0.12F, 0.13F, 0.15F}; ///< of the grid, to be seen on it
    bool transparent = false;          ///< nothing is there; the colours are not used

    /// `share` runs from 0 at the upper to 1 at the lower edge.
    [[nodiscard]] Float3 at(float share) const noexcept { return mix(upper, lower, share); }
};

} // namespace picture
