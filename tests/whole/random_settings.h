// SPDX-License-Identifier: MIT
#pragma once

#include "tests/literal/scene.h"
#include "tests/whole/numbers.h"

namespace whole {

/// Settings as a user might type them, sensible and senseless. `maps` is the number of weight maps
/// that the panel offers.
[[nodiscard]] literal::Settings random_settings(Numbers& numbers, int maps);

} // namespace whole
