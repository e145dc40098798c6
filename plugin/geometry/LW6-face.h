// SPDX-License-Identifier: MIT
#pragma once

#include "hostapi/types.h"
#include "plugin/geometry/LW6-XYZ.h"

namespace dastrel {

/// A copy of one foreground polygon. Code that fills a record again deletes the old `points`.
class face6_typ {
public:
    face6_typ() = default;
    face6_typ(const face6_typ&) = delete;
    face6_typ& operator=(const face6_typ&) = delete;
    virtual ~face6_typ();

    /// Moves every point by `d`; the normal and the id stay.
    void move(XYZ6_typ d);

    int num_points = 0;
    XYZ6_typ* points = nullptr; ///< owned array of `num_points`, in the host's order
    XYZ6_typ normal;            ///< as the host gave it
    LWPolID polID = nullptr;    ///< the host's polygon
};

} // namespace dastrel
