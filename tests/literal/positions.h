// SPDX-License-Identifier: MIT
#pragma once

#include <list>
#include <vector>

#include "tests/literal/kernel/face.h"
#include "tests/literal/kernel/sampler.h"
#include "tests/literal/scene.h"
#include "tests/literal/weights.h"

namespace literal {

/// The drawn positions in ascending X; equal X values keep their order of arrival.
struct Layout {
    std::list<Position> positions;
    double mean_area = 0.0; ///< of the faces
};

/// Draws one position per clone. The places come from a sampler of their own that starts at the
/// seed of the settings; the thinning by density draws from `run_sampler`. `faces` is not empty.
[[nodiscard]] Layout draw_positions(const std::vector<Face>& faces, const Settings& settings,
                                    const WeightReader& weights, Sampler& run_sampler);

} // namespace literal
