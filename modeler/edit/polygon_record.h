// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "hostapi/mesh_edit.h"
#include "mesh/polygons.h"
#include "modeler/edit/ids.h"

namespace modeler {

/// Builds the EDPolygonInfo record of a polygon; owns the record and its array of point handles.
class PolygonRecord {
public:
    /// Describes a polygon of the layer with these handles. The result is valid until the next
    /// call.
    /// @throws std::bad_alloc
    const EDPolygonInfo& describe(const mesh::Polygons& polygons, LayerIds ids,
                                  std::uint32_t polygon, bool all_selected)
    {
        constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
        const std::span<const std::uint32_t> corners = polygons.points(polygon);
        if (points_.size() < corners.size()) [[unlikely]]
            reserve(corners.size());
        LWPntID* const points = points_.data();
        for (std::size_t i = 0; i < corners.size(); ++i)
            points[i] = ids.id<LWPntID>(corners[i]);
        info_.pol = ids.id<LWPolID>(polygon);
        info_.type = polygons.type(polygon);
        info_.numPnts = static_cast<int>(std::min(corners.size(), most));
        info_.points = points;
        info_.flags = all_selected || polygons.selected(polygon) ? EDPF_SELECTED : 0;
        return info_;
    }

private:
    void reserve(std::size_t count);

    EDPolygonInfo info_{};
    std::vector<LWPntID> points_; ///< as long as the largest polygon so far
};

} // namespace modeler
