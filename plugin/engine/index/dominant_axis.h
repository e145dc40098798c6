// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

class face6_typ;

/// The axis (0 X, 1 Y, 2 Z) onto whose plane more than 60 % of the ground's area projects, as a
/// terrain's does for Y; -1 when there is none. Estimated from about 1,000 of the polygons.
int dominant_axis(face6_typ* polygons, int count);

} // namespace dastrel
