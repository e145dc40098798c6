// SPDX-License-Identifier: MIT
#include "plugin/geometry/rotation.h"

#include <cmath>

namespace dastrel {

rotation_typ::rotation_typ(double a) : s(std::sin(-a)), c(std::cos(-a)) {}

} // namespace dastrel
