// SPDX-License-Identifier: MIT
#pragma once

namespace dastrel {

class face6_typ;

/// The axis (0 X, 1 Y, 2 Z) along which the ground shows by far most of its area, as a terrain does
/// along Y; -1 when there is none. Judged by a sample of the polygons.
int column_axis(face6_typ* polygons, int count);

} // namespace dastrel
