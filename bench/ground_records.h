// SPDX-License-Identifier: MIT
#pragma once

#include "mesh/layer.h"

namespace bench {

/// While it lives, the polygons of a layer are the ground of the engine's run state, as if a scan
/// had recorded them.
class GroundRecords {
public:
    explicit GroundRecords(const mesh::Layer& layer);
    GroundRecords(const GroundRecords&) = delete;
    GroundRecords& operator=(const GroundRecords&) = delete;
    /// Releases the records, and the positions found on them.
    ~GroundRecords();
};

} // namespace bench
