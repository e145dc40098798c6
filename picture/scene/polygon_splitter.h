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

/// A piece of a polygon.
struct Piece {
    /// The polygon's corners, numbered from 0; numbers from the corner count on are new points.
    std::array<std::uint32_t, 3> corners{};
    /// Bit i: the side from corner i to the next one is an edge of the polygon.
    std::uint8_t edges = 0;
};

/// A point that splitting had to add, where edges of a polygon cross each other.
struct AddedPoint {
    mesh::Vec3 place;
    /// Corners between which it lies, for what else corners have. Where many edges cross in one
    /// place, the four nearest count.
    std::array<std::uint32_t, 4> corners{};
    std::array<float, 4> shares{}; ///< sum 1; 0 for a corner that has no part in it
};

/// Splits polygons into triangles, whatever their shape: concave, with a hole that a double edge
/// leads to, bent, or crossing themselves. One that crosses itself more than four times for each of
/// its corners, which is a scribble, is split as if it were seen whole from its first corner: its
/// crossings may be half as many as the square of its corners, and each would take its time.
class PolygonSplitter {
public:
    PolygonSplitter();
    PolygonSplitter(const PolygonSplitter&) = delete;
    PolygonSplitter& operator=(const PolygonSplitter&) = delete;
    ~PolygonSplitter();

    /// Splits the polygon with these corners, three or more, finite and not larger than 1e100.
    /// Triangles that have no area may be left out: a polygon without area may give none.
    void split(std::span<const mesh::Vec3> corners);

    /// What the last polygon was split into. Valid until the next one.
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

/// Twice the polygon's area as a vector along its normal.
[[nodiscard]] mesh::Vec3 area_vector(std::span<const mesh::Vec3> corners) noexcept;

} // namespace picture
