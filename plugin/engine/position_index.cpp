// SPDX-License-Identifier: MIT
#include "plugin/engine/position_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace dastrel {

namespace {

constexpr std::size_t fewest_lines = 256;
constexpr std::size_t most_lines_at_start = std::size_t{1} << 21;

/// Below this, squares of differences lose their last bits or vanish, and a computed distance may
/// fall short of the difference along one axis; above it never does.
constexpr double least_reach = 1e-150;

/// Cells twice as wide as the distance asked for: its box then touches two of them each way.
double cells_per_unit_for(double distance)
{
    const double width = 2 * distance;
    return width > 0 && std::isfinite(1 / width) && std::isfinite(width) ? 1 / width : 1.0;
}

std::size_t lines_for(std::size_t positions)
{
    std::size_t lines = fewest_lines;
    while (lines < positions && lines < most_lines_at_start)
        lines *= 2;
    return lines;
}

bool finite(const XYZ6_typ& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

/// Single precision; what it cannot hold becomes very large, and is never taken as it is.
float rounded(double coordinate)
{
    constexpr double limit = 1e30;
    return static_cast<float>(std::clamp(coordinate, -limit, limit));
}

double largest(const XYZ6_typ& p)
{
    return std::max({std::fabs(p.x()), std::fabs(p.y()), std::fabs(p.z())});
}

} // namespace

/// A question, with what is the same for all lines that it looks at.
struct position_index::query_typ {
    XYZ6_typ pos;
    double d = 0.0;
    double low_x = 0.0, high_x = 0.0;    ///< what the walk in ascending X looks at
    float x = 0.0F, y = 0.0F, z = 0.0F;  ///< relative to the origin
    float surely = 0.0F, perhaps = 0.0F; ///< squares: closer than the first is too close, farther
                                         ///< than the second is not

    /// What the walk asks.
    bool rejects(const XYZ6_typ& q) const
    {
        return !(q.x() > high_x) && q.x() > low_x && d > pos.calc_distance(q);
    }
};

position_index::position_index(double spacing, std::size_t expected)
    : lines(lines_for(expected), empty_line()), exact(lines.size()),
      cells_per_unit(cells_per_unit_for(spacing))
{}

position_index::line_typ position_index::empty_line()
{
    line_typ line{};
    line.x.fill(std::numeric_limits<float>::infinity());
    line.next = -1;
    return line;
}

std::int64_t position_index::cell(double coordinate) const
{
    // A rising function, also at its clamped ends: what lies between two coordinates lies in a cell
    // between theirs.
    constexpr double limit = 1e15;
    const double scaled = std::clamp(coordinate * cells_per_unit, -limit, limit);
    const auto truncated = static_cast<std::int64_t>(scaled);
    return truncated - (scaled < static_cast<double>(truncated) ? 1 : 0);
}

position_index::box_typ position_index::box(const XYZ6_typ& pos, double d) const
{
    const double reach = std::max(d, least_reach);
    return {cell(pos.x() - reach), cell(pos.x() + reach), cell(pos.y() - reach),
            cell(pos.y() + reach), cell(pos.z() - reach), cell(pos.z() + reach)};
}

std::size_t position_index::row(std::int64_t y, std::int64_t z)
{
    const std::uint64_t mixed = static_cast<std::uint64_t>(y) * 0x9E3779B97F4A7C15u ^
                                static_cast<std::uint64_t>(z) * 0xC2B2AE3D27D4EB4Fu;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
}

void position_index::put(line_typ& line, exact_typ& line_exact, const XYZ6_typ& pos)
{
    const auto i = static_cast<std::size_t>(line.used++);
    line.x[i] = rounded(pos.x() - origin.x());
    line.y[i] = rounded(pos.y() - origin.y());
    line.z[i] = rounded(pos.z() - origin.z());
    line_exact[i] = pos;
}

void position_index::put(const XYZ6_typ& pos)
{
    const std::size_t i =
        (row(cell(pos.y()), cell(pos.z())) + static_cast<std::size_t>(cell(pos.x()))) &
        (lines.size() - 1);
    line_typ& line = lines[i];
    if (line.used < static_cast<std::int32_t>(line_length)) {
        put(line, exact[i], pos);
        return;
    }
    // The full line moves out, so that the first one is always the one with room.
    more.push_back(line);
    more_exact.push_back(exact[i]);
    line = empty_line();
    line.next = static_cast<std::int32_t>(more.size() - 1);
    put(line, exact[i], pos);
}

void position_index::grow()
{
    if (asked > 0)
        cells_per_unit = cells_per_unit_for(asked_sum / static_cast<double>(asked));
    asked_sum = 0.0;
    asked = 0;
    const std::size_t size = lines.size() * 2;
    const auto old_lines = std::exchange(lines, large_array<line_typ>(size, empty_line()));
    const auto old_exact = std::exchange(exact, large_array<exact_typ>(size));
    const auto old_more = std::exchange(more, {});
    const auto old_more_exact = std::exchange(more_exact, {});
    const auto put_all = [this](const line_typ& line, const exact_typ& positions) {
        for (std::int32_t k = 0; k < line.used; ++k)
            put(positions[static_cast<std::size_t>(k)]);
    };
    for (std::size_t i = 0; i < old_more.size(); ++i)
        put_all(old_more[i], old_more_exact[i]);
    for (std::size_t i = 0; i < old_lines.size(); ++i)
        put_all(old_lines[i], old_exact[i]);
}

void position_index::insert(const XYZ6_typ& pos)
{
    if (!finite(pos))
        return; // no distance to it is ever less than another
    if (count == 0)
        origin = pos;
    if (count >= lines.size() * 2)
        grow();
    farthest = std::max(farthest, largest(pos - origin));
    put(pos);
    ++count;
}

position_index::query_typ position_index::query(const XYZ6_typ& pos, double d) const
{
    // How far a distance between coordinates rounded to single precision may be off: each of them
    // by its size times 2^-24, and the arithmetic by a few such parts. The walk's bounds in X are
    // off by up to 2^-53 of the coordinate itself.
    constexpr double part = 0x1p-20;
    constexpr double bound_part = 0x1p-50;
    const XYZ6_typ relative = pos - origin;
    const double margin =
        (std::max(farthest, largest(relative)) + d) * part + largest(pos) * bound_part;
    const double inner = std::max(d - margin, 0.0);
    const double outer = d + margin;
    // Squares outside this range would overflow or vanish: then every position is put to the test.
    const bool in_range = inner * inner > 1e-30 && outer * outer < 1e30;
    return {pos,
            d,
            pos.x() - d,
            pos.x() + d,
            rounded(relative.x()),
            rounded(relative.y()),
            rounded(relative.z()),
            in_range ? static_cast<float>(inner * inner) : 0.0F,
            in_range ? static_cast<float>(outer * outer) : std::numeric_limits<float>::infinity()};
}

bool position_index::too_close_in(const query_typ& query, std::size_t i) const
{
    const line_typ* line = &lines[i];
    const exact_typ* line_exact = &exact[i];
    for (;;) {
        std::array<float, line_length> squares{};
        float nearest = std::numeric_limits<float>::infinity();
        for (std::size_t k = 0; k < line_length; ++k) {
            const float dx = line->x[k] - query.x;
            const float dy = line->y[k] - query.y;
            const float dz = line->z[k] - query.z;
            squares[k] = dx * dx + dy * dy + dz * dz;
            nearest = std::min(nearest, squares[k]);
        }
        if (nearest < query.surely)
            return true;
        if (nearest <= query.perhaps)
            for (std::int32_t k = 0; k < line->used; ++k)
                if (query.rejects((*line_exact)[static_cast<std::size_t>(k)]))
                    return true;
        if (line->next < 0)
            return false;
        line_exact = &more_exact[static_cast<std::size_t>(line->next)];
        line = &more[static_cast<std::size_t>(line->next)];
    }
}

bool position_index::too_close(const XYZ6_typ& pos, double d)
{
    if (!(d > 0) || !finite(pos))
        return false; // no distance from there is ever less than another
    if (std::isfinite(d)) {
        asked_sum += d;
        ++asked;
    }
    const query_typ question = query(pos, d);
    const box_typ near = box(pos, d);
    const std::size_t mask = lines.size() - 1;
    if (near.cells() > static_cast<double>(lines.size())) {
        for (std::size_t i = 0; i <= mask; ++i)
            if (too_close_in(question, i))
                return true;
        return false;
    }
    for (std::int64_t z = near.z0; z <= near.z1; ++z) {
        for (std::int64_t y = near.y0; y <= near.y1; ++y) {
            const std::size_t start = row(y, z);
            for (std::int64_t x = near.x0; x <= near.x1; ++x)
                if (too_close_in(question, (start + static_cast<std::size_t>(x)) & mask))
                    return true;
        }
    }
    return false;
}

void position_index::prefetch(const XYZ6_typ& pos, double d) const
{
    if (!(d > 0) || !finite(pos))
        return;
    const box_typ near = box(pos, d);
    if (near.cells() > 16)
        return;
    for (std::int64_t z = near.z0; z <= near.z1; ++z) {
        for (std::int64_t y = near.y0; y <= near.y1; ++y) {
            const std::size_t start = row(y, z);
            for (std::int64_t x = near.x0; x <= near.x1; ++x)
                __builtin_prefetch(
                    &lines[(start + static_cast<std::size_t>(x)) & (lines.size() - 1)]);
        }
    }
}

} // namespace dastrel
