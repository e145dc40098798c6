// SPDX-License-Identifier: MIT
#include "picture/scene/corner_normals.h"

#include <cmath>

#include "picture/scene/scene_part.h"

namespace picture {

namespace {

Float3 area_of(const mesh::Layer& layer, std::size_t polygon, double scale)
{
    const auto points = layer.polygons.points(polygon);
    if (points.size() < 3)
        return {};
    const mesh::Vec3& first = layer.points[points[0]];
    mesh::Vec3 sum;
    const auto from_first = [&](std::uint32_t point) {
        const mesh::Vec3& p = layer.points[point];
        return mesh::Vec3{(p.x - first.x) / scale, (p.y - first.y) / scale,
                          (p.z - first.z) / scale};
    };
    mesh::Vec3 a = from_first(points[1]);
    for (std::size_t i = 2; i < points.size(); ++i) {
        const mesh::Vec3 b = from_first(points[i]);
        sum = {sum.x + a.y * b.z - a.z * b.y, sum.y + a.z * b.x - a.x * b.z,
               sum.z + a.x * b.y - a.y * b.x};
        a = b;
    }
    const bool finite = std::isfinite(sum.x) && std::isfinite(sum.y) && std::isfinite(sum.z);
    return finite ? to_single(sum) : Float3{};
}

} // namespace

CornerNormals::CornerNormals(const SceneLayer& layer, const SurfaceIndex& surfaces, double scale)
    : layer_(*layer.layer), first_(layer.first_polygon), end_(end_polygon(layer)),
      surfaces_(surfaces)
{
    for (std::size_t polygon = first_; polygon < end_ && !any_; ++polygon)
        any_ = cosine_of(polygon) < SurfaceIndex::flat;
    if (!any_)
        return;
    areas_.resize(end_ - first_);
    for (std::size_t polygon = first_; polygon < end_; ++polygon)
        areas_[polygon - first_] = area_of(layer_, polygon, scale);
    find_neighbours();
}

float CornerNormals::cosine_of(std::size_t polygon) const noexcept
{
    return surfaces_.cosine(layer_.polygons.surface(polygon));
}

/// Builds `starts_` and `around_` by counting sort.
void CornerNormals::find_neighbours()
{
    starts_.assign(layer_.points.size() + 1, 0);
    const auto for_each_corner = [this](auto visit) {
        for (std::size_t polygon = first_; polygon < end_; ++polygon)
            if (cosine_of(polygon) < SurfaceIndex::flat)
                for (const std::uint32_t point : layer_.polygons.points(polygon))
                    visit(polygon, point);
    };
    for_each_corner([this](std::size_t, std::uint32_t point) { ++starts_[point]; });
    std::uint32_t sum = 0;
    for (std::uint32_t& start : starts_)
        start = sum += start;
    around_.resize(sum);
    for_each_corner([this](std::size_t polygon, std::uint32_t point) {
        around_[--starts_[point]] = static_cast<std::uint32_t>(polygon);
    });
}

Float3 CornerNormals::at(std::size_t polygon, std::uint32_t point) const noexcept
{
    const float cosine = cosine_of(polygon);
    const Float3& own = areas_[polygon - first_];
    const float own_size = length(own);
    if (cosine >= SurfaceIndex::flat || !(own_size > 0.0F))
        return normalized(own);
    const mesh::TagIndex tag = layer_.polygons.surface(polygon);
    Float3 sum;
    for (std::uint32_t i = starts_[point]; i < starts_[point + 1]; ++i) {
        const Float3& other = areas_[around_[i] - first_];
        if (around_[i] == polygon || (layer_.polygons.surface(around_[i]) == tag &&
                                      dot(own, other) > cosine * own_size * length(other)))
            sum = sum + other;
    }
    return normalized(sum);
}

} // namespace picture
