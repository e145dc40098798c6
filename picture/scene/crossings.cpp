// SPDX-License-Identifier: MIT
#include "picture/scene/crossings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace picture {

using mesh::Vec3;

bool Crossings::cross(const Edge& a, const Edge& b) noexcept
{
    // The sign tells on which side of the line the point lies.
    const auto side = [](const Edge& line, const Place& place) {
        return (line.to.x - line.from.x) * (place.y - line.from.y) -
               (line.to.y - line.from.y) * (place.x - line.from.x);
    };
    const auto apart = [](double one, double other) {
        return (one > 0.0 && other < 0.0) || (one < 0.0 && other > 0.0);
    };
    return apart(side(a, b.from), side(a, b.to)) && apart(side(b, a.from), side(b, a.to));
}

bool Crossings::more_than(std::size_t limit, std::span<const Vec3> corners, const Vec3& normal)
{
    const Vec3 size{std::abs(normal.x), std::abs(normal.y), std::abs(normal.z)};
    const auto seen = [&](const Vec3& corner) {
        if (size.x >= size.y && size.x >= size.z)
            return Place{corner.y, corner.z};
        if (size.y >= size.z)
            return Place{corner.z, corner.x};
        return Place{corner.x, corner.y};
    };
    edges_.clear();
    active_.clear();
    Place last = seen(corners.back());
    for (const Vec3& corner : corners) {
        const Place next = seen(corner);
        edges_.push_back(last.x <= next.x ? Edge{last, next} : Edge{next, last});
        last = next;
    }
    std::sort(edges_.begin(), edges_.end(),
              [](const Edge& a, const Edge& b) { return a.from.x < b.from.x; });
    std::size_t count = 0;
    for (const Edge& edge : edges_) {
        for (std::size_t i = 0; i < active_.size();) {
            if (active_[i].to.x < edge.from.x) {
                active_[i] = active_.back();
                active_.pop_back();
                continue;
            }
            if (cross(active_[i], edge) && ++count > limit)
                return true;
            ++i;
        }
        active_.push_back(edge);
    }
    return false;
}

} // namespace picture
