// SPDX-License-Identifier: MIT
#include "plugin/engine/index/position_index.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace dastrel {

namespace {

constexpr std::size_t min_buckets = 256;
constexpr std::size_t max_initial_buckets = std::size_t{1} << 21;

/// Positions per bucket above which the number of buckets doubles.
constexpr std::size_t max_load = 1;

/// Below this, squares of differences underflow, and a computed distance may be less than the
/// difference along one axis.
constexpr double min_reach = 1e-150;

/// Above this, squares of differences overflow and the computed distance is infinite. A little more
/// than the square root of the largest double.
constexpr double max_reach = 0x1.0001p512;

/// The largest difference along an axis of a position that is closer than `d`.
double reach_of(double d) { return std::clamp(d, min_reach, max_reach); }

/// Cells are twice as wide as the distance, so that a query meets two of them along each axis.
double cells_per_unit_for(double distance)
{
    const double width = 2 * std::min(distance, max_reach);
    return width > 0 && std::isfinite(1 / width) && std::isfinite(width) ? 1 / width : 1.0;
}

std::size_t bucket_count_for(std::size_t positions)
{
    std::size_t buckets = min_buckets;
    while (buckets * max_load < positions && buckets < max_initial_buckets)
        buckets *= 2;
    return buckets;
}

bool finite(const XYZ6_typ& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y()) && std::isfinite(p.z());
}

/// Rounds to single precision, clamped; certain_sq and possible_sq do not decide at such sizes.
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

/// A query, with the values that are the same for all buckets.
struct position_index::query_typ {
    XYZ6_typ pos;
    double d = 0.0;
    double low_x = 0.0, high_x = 0.0;   ///< range of X that the walk compares
    float x = 0.0F, y = 0.0F, z = 0.0F; ///< relative to the origin
    /// Squared distances in single precision: below `certain_sq` a position is too close, above
    /// `possible_sq` it is not; between them the walk's comparisons decide.
    float certain_sq = 0.0F, possible_sq = 0.0F;

    /// The comparisons of the walk.
    bool rejects(const XYZ6_typ& q) const
    {
        return !(q.x() > high_x) && q.x() > low_x && d > pos.calc_distance(q);
    }
};

position_index::position_index(double spacing, std::size_t expected, int dominant_axis)
    : buckets(bucket_count_for(expected), empty_bucket()), column(dominant_axis),
      cells_per_unit(cells_per_unit_for(spacing))
{
    positions.reserve(buckets.size());
}

position_index::bucket_typ position_index::empty_bucket()
{
    bucket_typ bucket{};
    bucket.x.fill(std::numeric_limits<float>::infinity());
    bucket.position.fill(-1);
    return bucket;
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
    const std::size_t mask = buckets.size() - 1;
    std::size_t found = 0;
    for (std::size_t k = 0; k < count[z.beside]; ++k) {
        for (std::size_t j = 0; j < count[y.beside]; ++j) {
            const std::size_t own = row(y.own + offset[y.beside][j], z.own + offset[z.beside][k]) +
                                    static_cast<std::size_t>(x.own);
            for (std::size_t i = 0; i < count[x.beside]; ++i)
                near.bucket[found++] = static_cast<std::uint32_t>(
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
        (buckets.size() - 1);
    bucket_typ& bucket = buckets[i];
    std::size_t k = 0;
    while (k < bucket_size && bucket.position[k] >= 0)
        ++k;
    if (k == bucket_size || bucket.position[k] < -1) {
        // The full bucket moves to `overflow`, so that the first one always has space.
        overflow.push_back(bucket);
        bucket = empty_bucket();
        bucket.position.back() = -1 - static_cast<std::int32_t>(overflow.size());
        k = 0;
    }
    bucket.x[k] = rounded(pos.x() - origin.x());
    bucket.y[k] = rounded(pos.y() - origin.y());
    bucket.z[k] = rounded(pos.z() - origin.z());
    bucket.position[k] = static_cast<std::int32_t>(number);
}

void position_index::rebuild()
{
    if (positions.size() > buckets.size() * max_load)
        buckets = large_array<bucket_typ>(buckets.size() * 2);
    if (asked > 0)
        cells_per_unit = cells_per_unit_for(asked_sum / static_cast<double>(asked));
    asked_sum = 0.0;
    asked = 0;
    for (near_typ& near : queries)
        near.count = 0;
    buckets.fill(empty_bucket());
    overflow.clear();
    for (std::size_t i = 0; i < positions.size(); ++i)
        put(i);
}

void position_index::insert(const XYZ6_typ& pos)
{
    if (!finite(pos))
        return; // its distance compares less than nothing
    if (positions.empty()) {
        origin = pos;
        origin_largest = largest(pos);
    }
    positions.push_back(&pos);
    farthest = std::max(farthest, largest(pos - origin));
    if (positions.size() > buckets.size() * max_load) {
        rebuild();
    } else if (column >= 0 && overflow.size() > buckets.size() / 2) {
        column = -1; // too many share a column
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
    // Squares outside this range overflow or underflow: then every position is compared in double.
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

/// Whether a position of this bucket, without its overflow, is too close.
bool position_index::rejects(const query_typ& query, const bucket_typ& bucket) const
{
    std::array<float, bucket_size> squares{};
    for (std::size_t k = 0; k < bucket_size; ++k) {
        const float dx = bucket.x[k] - query.x;
        const float dy = bucket.y[k] - query.y;
        const float dz = bucket.z[k] - query.z;
        squares[k] = dx * dx + dy * dy + dz * dz;
    }
    const float nearest =
        std::min(std::min(squares[0], squares[1]), std::min(squares[2], squares[3]));
    if (nearest < query.certain_sq)
        return true;
    if (nearest > query.possible_sq)
        return false;
    for (const std::int32_t number : bucket.position)
        if (number >= 0 && query.rejects(*positions[static_cast<std::size_t>(number)]))
            return true;
    return false;
}

bool position_index::too_close_in(const query_typ& query, std::size_t i) const
{
    const bucket_typ* bucket = &buckets[i];
    for (;;) {
        if (rejects(query, *bucket))
            return true;
        const std::int32_t last = bucket->position.back();
        if (last >= -1)
            return false;
        bucket = &overflow[static_cast<std::size_t>(-2 - last)];
    }
}

bool position_index::too_close(const XYZ6_typ& pos, double d)
{
    if (positions.empty() || !(d > 0) || !finite(pos))
        return false; // no distance compares less
    asked_sum += std::min(d, max_reach);
    ++asked;
    const query_typ question = query(pos, d);
    near_typ* near = &queries[current];
    if (!near->covers(pos, d) && !find_near(pos, d, *near))
        return too_close_in_box(question);
    for (std::size_t i = 0; i < near->count; ++i)
        if (too_close_in(question, near->bucket[i]))
            return true;
    return false;
}

bool position_index::too_close_in_box(const query_typ& question) const
{
    const box_typ near = box(question.pos, question.d);
    if (near.cells() > static_cast<double>(buckets.size())) {
        for (std::size_t i = 0; i < buckets.size(); ++i)
            if (too_close_in(question, i))
                return true;
        return false;
    }
    for (std::int64_t z = near.z0; z <= near.z1; ++z) {
        for (std::int64_t y = near.y0; y <= near.y1; ++y) {
            const std::size_t start = row(y, z);
            for (std::int64_t x = near.x0; x <= near.x1; ++x)
                if (too_close_in(question,
                                 (start + static_cast<std::size_t>(x)) & (buckets.size() - 1)))
                    return true;
        }
    }
    return false;
}

void position_index::prefetch_query(std::size_t number, const XYZ6_typ& pos, double d)
{
    near_typ& near = queries[number];
    near.count = 0;
    if (!find_near(pos, d, near))
        return;
    for (std::size_t i = 0; i < near.count; ++i)
        __builtin_prefetch(&buckets[near.bucket[i]]);
}

} // namespace dastrel
