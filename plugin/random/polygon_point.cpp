// SPDX-License-Identifier: MIT
// The random point of a polygon.
#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/axes.h"
#include "plugin/random/LW6-random2.h"

#include <cstddef>
#include <memory>

namespace dastrel {

namespace {

/// The polygon's own plane: its first edge along +X, its normal along +Y.
axes_typ frame_of(const face6_typ& poly)
{
    axes_typ frame;
    frame.axis[1] = ~poly.normal;
    frame.axis[0] = poly.points[1] - poly.points[0];
    frame.axis[2] = frame.axis[0] * frame.axis[1];
    frame.calc_transf_angles();
    return frame;
}

bool crosses(XYZ6_typ a, XYZ6_typ b, double u)
{
    return (a.x() <= u && u <= b.x()) || (b.x() <= u && u <= a.x());
}

/// Height at which the line X = u crosses the edge from a to b. An edge that lies in that line has
/// no one crossing; its first point is taken.
double crossing_height(XYZ6_typ a, XYZ6_typ b, double u)
{
    if (a.x() == b.x() && a.x() == u)
        return a.z();
    return (a.z() - b.z()) * ((u - a.x()) / (a.x() - b.x())) + a.z();
}

} // namespace

XYZ6_typ random::z_polygonu(face6_typ* poly)
{
    const int n = poly->num_points;
    if (poly->points == nullptr || n < 3)
        return {};
    const XYZ6_typ origin = poly->points[0];
    const axes_typ frame = frame_of(*poly);
    const auto local = std::make_unique<XYZ6_typ[]>(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        local[static_cast<std::size_t>(i)] = poly->points[i];
    XYZ6_typ* const pts = local.get();
    frame.to_local(pts, n, origin);

    double min_x = pts[0].x();
    double max_x = pts[0].x();
    for (int i = 1; i < n; ++i) {
        if (pts[i].x() < min_x)
            min_x = pts[i].x();
        if (pts[i].x() > max_x)
            max_x = pts[i].x();
    }
    const double u = z_zakresu(min_x, max_x);

    // Only the first two crossings count, in the order of the points; the closing edge stands in
    // for a missing one, crossed or not.
    double height[2] = {0.0, 0.0};
    int found = 0;
    for (int i = 0; i + 1 < n && found < 2; ++i)
        if (crosses(pts[i], pts[i + 1], u))
            height[found++] = crossing_height(pts[i], pts[i + 1], u);
    if (found < 2)
        height[found] = crossing_height(pts[n - 1], pts[0], u);
    const double v = z_zakresu(height[0], height[1]);

    XYZ6_typ point(u, 0.0, v);
    frame.to_global(&point, 1, origin);
    return point;
}

} // namespace dastrel
