// SPDX-License-Identifier: MIT
#include "modeler/edit/polygon_record.h"

namespace modeler {

// Not inline: it is rarely called, and its code would be in the way where polygons are described.
void PolygonRecord::reserve(std::size_t count) { points_.resize(count); }

} // namespace modeler
