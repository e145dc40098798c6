// SPDX-License-Identifier: MIT
#include "plugin/random/flat_face.h"

#include <cstddef>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/axes.h"
#include "plugin/random/LW6-random2.h"

namespace dastrel {

flat_face::flat_face(const face6_typ& poly)
    : origin(poly.points[0]), points(static_cast<std::size_t>(poly.num_points))
{
    axes_typ frame;
    frame.axis[1] = ~poly.normal;
    frame.axis[0] = poly.points[1] - poly.points[0];
    frame.axis[2] = frame.axis[0] * frame.axis[1];
    frame.calc_transf_angles();
    for (std::size_t i = 0; i < 3; ++i)
        turn[i] = turn_typ(frame.angle[i]);

    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = poly.points[i];
    frame.to_local(points.data(), poly.num_points, origin);
    min_x = points[0].x();
    max_x = points[0].x();
    for (const XYZ6_typ& p : points) {
        if (p.x() < min_x)
            min_x = p.x();
        if (p.x() > max_x)
            max_x = p.x();
    }
}

namespace {

bool crosses(const XYZ6_typ& a, const XYZ6_typ& b, double u)
{
    return (a.x() <= u && u <= b.x()) || (b.x() <= u && u <= a.x());
}

/// Height at which the line X = u crosses the edge from a to b. An edge that lies in that line has
/// no one crossing; its first point is taken.
double crossing_height(const XYZ6_typ& a, const XYZ6_typ& b, double u)
{
    if (a.x() == b.x() && a.x() == u)
        return a.z();
    return (a.z() - b.z()) * ((u - a.x()) / (a.x() - b.x())) + a.z();
}

} // namespace

XYZ6_typ flat_face::draw(random& sampler) const
{
    const double u = sampler.z_zakresu(min_x, max_x);
    // Only the first two crossings count, in the order of the points; the closing edge stands in
    // for a missing one, crossed or not.
    double height[2] = {0.0, 0.0};
    int found = 0;
    for (std::size_t i = 0; i + 1 < points.size() && found < 2; ++i)
        if (crosses(points[i], points[i + 1], u))
            height[found++] = crossing_height(points[i], points[i + 1], u);
    if (found < 2)
        height[found] = crossing_height(points.back(), points.front(), u);
    const double v = sampler.z_zakresu(height[0], height[1]);
    const XYZ6_typ local(u, 0.0, v);
    return turn[0].about_Y(turn[1].about_Z(turn[2].about_X(local))).move(origin);
}

XYZ6_typ random::z_polygonu(face6_typ* poly)
{
    if (poly->points == nullptr || poly->num_points < 3)
        return {};
    return flat_face(*poly).draw(*this);
}

} // namespace dastrel
