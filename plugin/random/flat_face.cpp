// SPDX-License-Identifier: MIT
#include "plugin/random/flat_face.h"

#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/axes.h"
#include "plugin/random/LW6-random2.h"

namespace dastrel {

flat_face::flat_face(const face6_typ& poly, std::pmr::memory_resource& memory)
{
    if (poly.points == nullptr || poly.num_points < 3)
        return;
    origin = poly.points[0];
    axes_typ frame;
    frame.axis[1] = ~poly.normal;
    frame.axis[0] = poly.points[1] - poly.points[0];
    frame.axis[2] = frame.axis[0] * frame.axis[1];
    frame.calc_transf_angles();
    for (std::size_t i = 0; i < 3; ++i)
        turn[i] = rotation_typ(frame.angle[i]);

    std::vector<XYZ6_typ> points(poly.points, poly.points + poly.num_points);
    frame.to_local(points.data(), poly.num_points, origin);
    auto* const flat = static_cast<corner_typ*>(
        memory.allocate(points.size() * sizeof(corner_typ), alignof(corner_typ)));
    corners = {flat, points.size()};
    min_x = points[0].x();
    max_x = points[0].x();
    for (std::size_t i = 0; i < points.size(); ++i) {
        flat[i] = {points[i].x(), points[i].z()};
        if (flat[i].x < min_x)
            min_x = flat[i].x;
        if (flat[i].x > max_x)
            max_x = flat[i].x;
    }
}

double flat_face::crossing_height(const corner_typ& a, const corner_typ& b, double u)
{
    if (a.x == b.x && a.x == u)
        return a.z;
    return (a.z - b.z) * ((u - a.x) / (a.x - b.x)) + a.z;
}

XYZ6_typ flat_face::draw(random& sampler) const
{
    if (corners.empty())
        return {};
    const double u = sampler.z_zakresu(min_x, max_x);
    const auto crosses = [u](const corner_typ& a, const corner_typ& b) {
        return (a.x <= u && u <= b.x) || (b.x <= u && u <= a.x);
    };
    // Only the first two crossings count, in the order of the points; the closing edge is used for
    // a missing one, whether it is crossed or not.
    double height[2] = {0.0, 0.0};
    int found = 0;
    for (std::size_t i = 0; i + 1 < corners.size() && found < 2; ++i)
        if (crosses(corners[i], corners[i + 1]))
            height[found++] = crossing_height(corners[i], corners[i + 1], u);
    if (found < 2)
        height[found] = crossing_height(corners.back(), corners.front(), u);
    const double v = sampler.z_zakresu(height[0], height[1]);
    const XYZ6_typ local(u, 0.0, v);
    return turn[0].about_Y(turn[1].about_Z(turn[2].about_X(local))).move(origin);
}

XYZ6_typ random::z_polygonu(face6_typ* poly)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): left uninitialised on purpose
    std::array<std::byte, 1024> room;
    std::pmr::monotonic_buffer_resource memory(room.data(), room.size());
    return flat_face(*poly, memory).draw(*this);
}

} // namespace dastrel
