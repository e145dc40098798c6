// SPDX-License-Identifier: MIT
#pragma once

#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// The angle between a unit normal and the Y axis, in radians. 0 for a normal straight up and,
/// deliberately, for one straight down.
double normal_pitch(XYZ6_typ normal);

/// Sets `heading` to the angle of a unit normal about the Y axis, in radians from -pi to pi.
/// Returns false, and leaves `heading` as it is, for a normal along the Y axis, which has none.
bool normal_heading(XYZ6_typ normal, double& heading);

} // namespace dastrel
