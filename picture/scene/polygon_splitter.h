// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "mesh/vec3.h"
#include "picture/scene/crossings.h"

namespace picture {

/// A triangle of a split polygon.
struct Piece {
    /// Corners of the polygon, from 0; numbers from the corner count on denote added points.
    std::array<std::uint32_t, 3> corners{};
    /// Bit i is set if the side from corner i to the next one is an edge of the polygon.
    std::uint8_t edges = 0;
};

/// A point added by splitting where edges of a polygon intersect.
struct AddedPoint {
    mesh::Vec3 place;
    /// The corners between which it lies, for interpolating attributes. The four nearest ones if
    /// many edges intersect in one point.
    std::array<std::uint32_t, 4> corners{};
    std::array<float, 4> shares{}; ///< interpolation weights; sum 1, 0 for unused corners
};

/// Splits polygons of any shape into triangles: concave, non-planar, self-intersecting, or with a
/// hole connected by a double edge. A polygon with more than four self-intersections per corner is
/// split as a fan from its first corner instead, since the number of intersections can grow with
/// the square of the number of corners.
class PolygonSplitter {
public:
    PolygonSplitter();
    PolygonSplitter(const PolygonSplitter&) = delete;
    PolygonSplitter& operator=(const PolygonSplitter&) = delete;
    ~PolygonSplitter();

    /// Splits a polygon. It has three or more corners, all finite and at most 1e100 in magnitude.
    /// Triangles without area may be omitted, so a degenerate polygon may give none.
    void split(std::span<const mesh::Vec3> corners);

    /// The triangles of the last polygon. Valid until the next call of `split`.
    [[nodiscard]] std::span<const Piece> pieces() const noexcept { return pieces_; }
    [[nodiscard]] std::span<const AddedPoint> added_points() const noexcept { return added_; }

private:
    struct Tessellator;

    void make_fan(std::uint32_t corner_count);
    bool split_as_fan(std::span<const mesh::Vec3> corners, const mesh::Vec3& normal);
    bool split_quad(std::span<const mesh::Vec3> corners, const mesh::Vec3& normal);

    std::vector<Piece> pieces_;
    std::vector<AddedPoint> added_;
    Crossings crossings_;
    std::unique_ptr<Tessellator> tessellator_;
};

/// Twice the area vector of the polygon: along its normal, with twice the area as its length.
[[nodiscard]] mesh::Vec3 area_vector(std::span<const mesh::Vec3> corners) noexcept;

} // namespace picture
