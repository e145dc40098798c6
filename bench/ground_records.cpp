// SPDX-License-Identifier: MIT
#include "bench/ground_records.h"

#include <cstddef>

#include "mesh/normal.h"
#include "plugin/engine/clone.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/host/run_state.h"

namespace bench {

GroundRecords::GroundRecords(const mesh::Layer& layer)
{
    const std::size_t count = layer.polygons.size();
    dastrel::num_polys = static_cast<int>(count);
    dastrel::reserve_memory(dastrel::num_polys);
    for (std::size_t i = 0; i < count; ++i) {
        dastrel::face6_typ& record = dastrel::poly_data[i];
        const auto corners = layer.polygons.points(i);
        record.num_points = static_cast<int>(corners.size());
        record.points = new dastrel::XYZ6_typ[corners.size()];
        for (std::size_t k = 0; k < corners.size(); ++k) {
            const mesh::Vec3& p = layer.points[corners[k]];
            record.points[k] = dastrel::XYZ6_typ(p.x, p.y, p.z);
        }
        const mesh::Vec3 normal = mesh::polygon_normal(layer, i);
        record.normal = dastrel::XYZ6_typ(normal.x, normal.y, normal.z);
    }
}

GroundRecords::~GroundRecords() { dastrel::free_memory(); }

} // namespace bench
