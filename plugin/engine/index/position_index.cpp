// SPDX-License-Identifier: MIT
#include "plugin/engine/index/position_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dastrel {

namespace {

constexpr std::size_t fewest_lines = 256;
constexpr std::size_t most_lines_at_start = std::size_t{1} << 21;

/// With more positions than this for each line, there are twice as many lines.
constexpr std::size_t most_for_each = 1;

/// Below this, squares of differences lose their last bits or vanish, and a computed distance may
/// fall short of the difference along one axis; above it never does.
constexpr double least_reach = 1e-150;

/// Above this, squares of differences overflow: the computed distance is infinite, and less than no
/// other. A little more than the square root of the largest number.
constexpr double most_reach = 0x1.0001p512;

/// How far away along any axis a position closer than `d` can be.
double reach_of(double d) { return std::clamp(d, least_reach, most_reach); }

/// Cells twice as wide as the distance asked for: its box then touches two of them each way.
double cells_per_unit_for(double distance)
{
    const double width = 2 * std::min(distance, most_reach);
    return width > 0 && std::isfinite(1 / width) && std::isfinite(width) ? 1 / width : 1.0;
}

std::size_t lines_for(std::size_t positions)
{
    std::size_t lines = fewest_lines;
    while (lines * most_for_each < positions && lines < most_lines_at_start)
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

position_index::position_index(double spacing, std::size_t expected, int column_axis)
    : lines(lines_for(expected), empty_line()), column(column_axis),
      cells_per_unit(cells_per_unit_for(spacing))
{
    positions.reserve(lines.size());
}

position_index::line_typ position_index::empty_line()
{
    line_typ line{};
    line.x.fill(std::numeric_limits<float>::infinity());
    line.position.fill(-1);
    return line;
}

std::int64_t position_index::cell(const XYZ6_typ& pos, int axis, double reach) const
{
    if (axis == column)
        return 0;
    // A rising function, also at its clamped ends: what lies between two coordinates lies in a cell
    // between theirs.
    constexpr double limit = 1e15;
    const double coordinate = static_cast<const double*>(pos)[axis] + reach;
    const double scaled = std::clamp(coordinate * cells_per_unit, -limit, limit);
    const auto truncated = static_cast<std::int64_t>(scaled);
    return truncated - (scaled < static_cast<double>(truncated) ? 1 : 0);
}

position_index::box_typ position_index::box(const XYZ6_typ& pos, double d) const
{
    const double reach = reach_of(d);
    return {cell(pos, 0, -reach), cell(pos, 0, reach),  cell(pos, 1, -reach),
            cell(pos, 1, reach),  cell(pos, 2, -reach), cell(pos, 2, reach)};
}

bool position_index::find_span(double coordinate, double reach, span_typ& span) const
{
    constexpr double limit = 0x1p40;
    const double scaled = coordinate * cells_per_unit;
    if (!(std::fabs(scaled) < limit))
        return false;
    const auto truncated = static_cast<std::int64_t>(scaled);
    span.own = truncated - (scaled < static_cast<double>(truncated) ? 1 : 0);
    const double within = scaled - static_cast<double>(span.own);
    const double margin = reach + std::fabs(scaled) * 0x1p-50; // for what was rounded on the way
    span.beside = (within < margin ? 1U : 0U) | (within + margin >= 1 ? 2U : 0U);
    return true;
}

bool position_index::find_near(const XYZ6_typ& pos, double d, near_typ& near) const
{
    // A little more than the distance itself, for what is rounded on the way.
    const double reach = reach_of(d) * cells_per_unit * (1 + 0x1p-30);
    span_typ x, y, z;
    if (!(reach < 1) || (column != 0 && !find_span(pos.x(), reach, x)) ||
        (column != 1 && !find_span(pos.y(), reach, y)) ||
        (column != 2 && !find_span(pos.z(), reach, z)))
        return false;
    static constexpr std::size_t count[4] = {1, 2, 2, 3};
    static constexpr std::int64_t offset[4][3] = {{0}, {0, -1}, {0, 1}, {0, -1, 1}};
    const std::size_t mask = lines.size() - 1;
    std::size_t found = 0;
    for (std::size_t k = 0; k < count[z.beside]; ++k) {
        for (std::size_t j = 0; j < count[y.beside]; ++j) {
            const std::size_t own = row(y.own + offset[y.beside][j], z.own + offset[z.beside][k]) +
                                    static_cast<std::size_t>(x.own);
            for (std::size_t i = 0; i < count[x.beside]; ++i)
                near.line[found++] = static_cast<std::uint32_t>(
                    (own + static_cast<std::size_t>(offset[x.beside][i])) & mask);
        }
    }
    near.pos = pos;
    near.d = d;
    near.count = found;
    return true;
}

std::size_t position_index::row(std::int64_t y, std::int64_t z)
{
    const std::uint64_t mixed = static_cast<std::uint64_t>(y) * 0x9E3779B97F4A7C15u ^
                                static_cast<std::uint64_t>(z) * 0xC2B2AE3D27D4EB4Fu;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
}

void position_index::put(std::size_t number)
{
    const XYZ6_typ& pos = *positions[number];
    const std::size_t i =
        (row(cell(pos, 1, 0.0), cell(pos, 2, 0.0)) + static_cast<std::size_t>(cell(pos, 0, 0.0))) &
        (lines.size() - 1);
    line_typ& line = lines[i];
    std::size_t k = 0;
    while (k < line_length && line.position[k] >= 0)
        ++k;
    if (k == line_length || line.position[k] < -1) {
        // The full line moves out, so that the first one is always the one with room.
        more.push_back(line);
        line = empty_line();
        line.position.back() = -1 - static_cast<std::int32_t>(more.size());
        k = 0;
    }
    line.x[k] = rounded(pos.x() - origin.x());
    line.y[k] = rounded(pos.y() - origin.y());
    line.z[k] = rounded(pos.z() - origin.z());
    line.position[k] = static_cast<std::int32_t>(number);
}

void position_index::rebuild()
{
    if (positions.size() > lines.size() * most_for_each)
        lines = large_array<line_typ>(lines.size() * 2);
    if (asked > 0)
        cells_per_unit = cells_per_unit_for(asked_sum / static_cast<double>(asked));
    asked_sum = 0.0;
    asked = 0;
    for (near_typ& near : announced)
        near.count = 0;
    lines.fill(empty_line());
    more.clear();
    for (std::size_t i = 0; i < positions.size(); ++i)
        put(i);
}

void position_index::insert(const XYZ6_typ& pos)
{
    if (!finite(pos))
        return; // no distance to it is ever less than another
    if (positions.empty()) {
        origin = pos;
        origin_largest = largest(pos);
    }
    positions.push_back(&pos);
    farthest = std::max(farthest, largest(pos - origin));
    if (positions.size() > lines.size() * most_for_each) {
        rebuild();
    } else if (column >= 0 && more.size() > lines.size() / 2) {
        column = -1; // too many stand above one another
        rebuild();
    } else {
        put(positions.size() - 1);
    }
}

position_index::query_typ position_index::query(const XYZ6_typ& pos, double d) const
{
    // How far a distance between coordinates rounded to single precision may be off: each of them
    // by its size times 2^-24, and the arithmetic by a few such parts. The walk's bounds in X are
    // off by up to 2^-53 of the coordinate itself.
    constexpr double part = 0x1p-20;
    constexpr double bound_part = 0x1p-50;
    const XYZ6_typ relative(pos.x() - origin.x(), pos.y() - origin.y(), pos.z() - origin.z());
    const double margin =
        (std::max(farthest, largest(relative)) + d) * part + origin_largest * bound_part;
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

/// Whether a position of this line alone is too close.
bool position_index::rejects(const query_typ& query, const line_typ& line) const
{
    std::array<float, line_length> squares{};
    for (std::size_t k = 0; k < line_length; ++k) {
        const float dx = line.x[k] - query.x;
        const float dy = line.y[k] - query.y;
        const float dz = line.z[k] - query.z;
        squares[k] = dx * dx + dy * dy + dz * dz;
    }
    const float nearest =
        std::min(std::min(squares[0], squares[1]), std::min(squares[2], squares[3]));
    if (nearest < query.surely)
        return true;
    if (nearest > query.perhaps)
        return false;
    for (const std::int32_t number : line.position)
        if (number >= 0 && query.rejects(*positions[static_cast<std::size_t>(number)]))
            return true;
    return false;
}

bool position_index::too_close_in(const query_typ& query, std::size_t i) const
{
    const line_typ* line = &lines[i];
    for (;;) {
        if (rejects(query, *line))
            return true;
        const std::int32_t last = line->position.back();
        if (last >= -1)
            return false;
        line = &more[static_cast<std::size_t>(-2 - last)];
    }
}

bool position_index::too_close(const XYZ6_typ& pos, double d)
{
    if (positions.empty() || !(d > 0) || !finite(pos))
        return false; // no distance from there is ever less than another
    asked_sum += std::min(d, most_reach);
    ++asked;
    const query_typ question = query(pos, d);
    near_typ* near = &announced[current];
    if (!near->answers(pos, d) && !find_near(pos, d, *near))
        return too_close_in_box(question);
    for (std::size_t i = 0; i < near->count; ++i)
        if (too_close_in(question, near->line[i]))
            return true;
    return false;
}

bool position_index::too_close_in_box(const query_typ& question) const
{
    const box_typ near = box(question.pos, question.d);
    if (near.cells() > static_cast<double>(lines.size())) {
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (too_close_in(question, i))
                return true;
        return false;
    }
    for (std::int64_t z = near.z0; z <= near.z1; ++z) {
        for (std::int64_t y = near.y0; y <= near.y1; ++y) {
            const std::size_t start = row(y, z);
            for (std::int64_t x = near.x0; x <= near.x1; ++x)
                if (too_close_in(question,
                                 (start + static_cast<std::size_t>(x)) & (lines.size() - 1)))
                    return true;
        }
    }
    return false;
}

void position_index::announce(std::size_t number, const XYZ6_typ& pos, double d)
{
    near_typ& near = announced[number];
    near.count = 0;
    if (!find_near(pos, d, near))
        return;
    for (std::size_t i = 0; i < near.count; ++i)
        __builtin_prefetch(&lines[near.line[i]]);
}

} // namespace dastrel
