// SPDX-License-Identifier: MIT
#include "plugin/geometry/turn.h"

#include <cmath>

namespace dastrel {

turn_typ::turn_typ(double a) : s(std::sin(-a)), c(std::cos(-a)) {}

} // namespace dastrel
