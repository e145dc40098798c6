// SPDX-License-Identifier: MIT
#include "modeler/edit/polygon_record.h"

namespace modeler {

// Not inline: rarely called, so it is kept out of the hot path.
void PolygonRecord::reserve(std::size_t count) { points_.resize(count); }

} // namespace modeler
