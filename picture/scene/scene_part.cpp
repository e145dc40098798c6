// SPDX-License-Identifier: MIT
#include "picture/scene/scene_part.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "picture/image/colour.h"
#include "picture/scene/corner_normals.h"
#include "picture/scene/packed_normal.h"
#include "picture/scene/spline.h"
#include "picture/view/vectors.h"

namespace picture {

namespace {

constexpr float line_radius = 0.002F; ///< about a pixel and a half wide in a picture of 720 rows
constexpr float dot_radius = 0.008F;
constexpr mesh::FourCC polygon_bone = mesh::fourcc("BONE");

/// Fills a part polygon by polygon.
class PartMaker {
public:
    PartMaker(const SceneLayer& source, const SurfaceIndex& surfaces, const Placement& placement)
        : source_(source), layer_(*source.layer), surfaces_(surfaces), placement_(placement),
          normals_(source, surfaces, placement.scale)
    {}

    ScenePart make(const std::atomic<bool>* cancel)
    {
        place_points();
        take_colours();
        const std::size_t end = end_polygon(source_);
        reserve(end);
        constexpr std::size_t often = 4096; // polygons between looks at `cancel`
        for (std::size_t polygon = source_.first_polygon; polygon < end; ++polygon) {
            if (cancel != nullptr && polygon % often == 0 && *cancel)
                throw SceneCancelled();
            add(static_cast<std::uint32_t>(polygon));
        }
        add_loose_points();
        part_.points.push_back({}); // the tracer reads 16 bytes at a time
        return std::move(part_);
    }

private:
    [[nodiscard]] mesh::Vec3 placed(std::uint32_t point) const
    {
        const mesh::Vec3 from_centre = layer_.points[point] - placement_.centre;
        return {from_centre.x / placement_.scale, from_centre.y / placement_.scale,
                from_centre.z / placement_.scale};
    }

    void place_points()
    {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        shown_ = shown_points(source_);
        const auto count = static_cast<std::uint32_t>(layer_.points.size());
        part_.layer_points = count;
        part_.points.reserve(count + 1);
        for (std::uint32_t i = 0; i < count; ++i) {
            const mesh::Vec3 place = placed(i);
            const bool seen = shown_[i] && is_finite(place);
            part_.points.push_back(seen ? to_single(place) : Float3{nan, nan, nan});
        }
    }

    /// Collects the colours: first the default, then those of the surfaces in use.
    void take_colours()
    {
        const mesh::SurfaceLook standard;
        part_.colours.push_back(linear_colour(standard.red, standard.green, standard.blue));
        std::unordered_map<mesh::TagIndex, std::uint32_t> numbers;
        const mesh::Polygons& polygons = layer_.polygons;
        part_.surfaces.resize(end_polygon(source_), 0);
        for (std::size_t i = source_.first_polygon; i < part_.surfaces.size(); ++i) {
            const mesh::TagIndex tag = polygons.surface(i);
            if (i > source_.first_polygon && tag == polygons.surface(i - 1)) {
                part_.surfaces[i] = part_.surfaces[i - 1];
                continue;
            }
            const mesh::SurfaceLook* const look = surfaces_.look(tag);
            if (look == nullptr)
                continue;
            const auto next = static_cast<std::uint32_t>(part_.colours.size());
            const auto [number, is_new] = numbers.try_emplace(tag, next);
            if (is_new)
                part_.colours.push_back(linear_colour(look->red, look->green, look->blue));
            part_.surfaces[i] = number->second;
        }
    }

    void reserve(std::size_t end)
    {
        std::size_t triangles = 0;
        for (std::size_t polygon = source_.first_polygon; polygon < end; ++polygon) {
            const std::size_t corners = layer_.polygons.points(polygon).size();
            triangles += corners > 2 ? corners - 2 : 0;
        }
        part_.triangles.reserve(triangles);
        part_.triangle_polygons.reserve(triangles);
        part_.triangle_edges.reserve(triangles);
        if (normals_.any())
            part_.corner_normals.reserve(triangles);
    }

    void add(std::uint32_t polygon)
    {
        const auto points = layer_.polygons.points(polygon);
        corners_.clear();
        for (const std::uint32_t point : points) {
            corners_.push_back(placed(point));
            if (!is_finite(corners_.back()))
                return;
        }
        const mesh::FourCC type = layer_.polygons.type(polygon);
        if (points.size() == 1)
            add_dot(to_single(corners_[0]), polygon);
        else if (type == mesh::polygon_curv && points.size() > 2)
            add_line(spline(corners_, layer_.polygons.flags(polygon)), polygon);
        else if (points.size() == 2 || type == mesh::polygon_curv || type == polygon_bone)
            add_line(corners_, polygon);
        else if (points.size() > 2)
            add_face(points, polygon);
    }

    void add_face(std::span<const std::uint32_t> points, std::uint32_t polygon)
    {
        splitter_.split(corners_);
        const auto first_added = static_cast<std::uint32_t>(part_.points.size());
        const auto count = static_cast<std::uint32_t>(points.size());
        for (AddedPoint added : splitter_.added_points()) {
            for (std::uint32_t& corner : added.corners)
                corner = points[corner];
            part_.points.push_back(to_single(added.place));
            part_.added.push_back(added);
        }
        for (const Piece& piece : splitter_.pieces()) {
            std::array<std::uint32_t, 3> triangle{};
            std::array<std::uint32_t, 3> normals{};
            for (std::size_t i = 0; i < 3; ++i) {
                const std::uint32_t corner = piece.corners.at(i);
                triangle.at(i) = corner < count ? points[corner] : first_added + corner - count;
                if (normals_.any())
                    normals.at(i) = pack_normal(
                        normals_.at(polygon, corner < count ? points[corner] : points[0]));
            }
            part_.triangles.push_back(triangle);
            part_.triangle_polygons.push_back(polygon);
            part_.triangle_edges.push_back(piece.edges);
            if (normals_.any())
                part_.corner_normals.push_back(normals);
        }
    }

    void add_line(std::span<const mesh::Vec3> places, std::uint32_t polygon)
    {
        const auto first = static_cast<std::uint32_t>(part_.line_points.size());
        for (std::uint32_t i = 0; i < places.size(); ++i) {
            part_.line_points.push_back({to_single(places[i]), line_radius});
            if (i + 1 < places.size()) {
                part_.lines.push_back(first + i);
                part_.line_polygons.push_back(polygon);
            }
        }
    }

    void add_dot(const Float3& place, std::uint32_t polygon)
    {
        part_.dots.push_back({place, dot_radius});
        part_.dot_polygons.push_back(polygon);
    }

    void add_loose_points()
    {
        if (!source_.loose_points)
            return;
        std::vector<bool> loose(layer_.points.size(), true);
        for (std::size_t polygon = 0; polygon < layer_.polygons.size(); ++polygon)
            for (const std::uint32_t point : layer_.polygons.points(polygon))
                loose[point] = false;
        for (std::uint32_t i = 0; i < part_.layer_points; ++i)
            if (loose[i] && !std::isnan(part_.points[i].x))
                add_dot(part_.points[i], no_polygon);
    }

    const SceneLayer& source_;
    const mesh::Layer& layer_;
    const SurfaceIndex& surfaces_;
    Placement placement_;
    CornerNormals normals_;
    PolygonSplitter splitter_;
    ScenePart part_;
    std::vector<bool> shown_;
    std::vector<mesh::Vec3> corners_;
};

} // namespace

std::size_t end_polygon(const SceneLayer& layer) noexcept
{
    return std::min(layer.end_polygon, layer.layer->polygons.size());
}

std::vector<bool> shown_points(const SceneLayer& layer)
{
    const mesh::Polygons& polygons = layer.layer->polygons;
    std::vector<bool> shown(layer.layer->points.size(), layer.loose_points);
    const std::size_t end = end_polygon(layer);
    // Points of polygons that are not shown do not count as loose.
    if (layer.loose_points)
        for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon)
            for (const std::uint32_t point : polygons.points(polygon))
                shown[point] = false;
    for (std::size_t polygon = layer.first_polygon; polygon < end; ++polygon)
        for (const std::uint32_t point : polygons.points(polygon))
            shown[point] = true;
    return shown;
}

ScenePart make_part(const SceneLayer& layer, const SurfaceIndex& surfaces,
                    const Placement& placement, const std::atomic<bool>* cancel)
{
    return PartMaker(layer, surfaces, placement).make(cancel);
}

} // namespace picture
