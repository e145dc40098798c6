// SPDX-License-Identifier: MIT
#include "tests/literal/kernel/sampler.h"

#include <cstddef>
#include <vector>

#include "tests/literal/kernel/frame.h"
#include "tests/literal/kernel/integers.h"

namespace literal {

namespace {

bool reaches(Vec3 a, Vec3 b, double u) { return (a.x <= u && u <= b.x) || (b.x <= u && u <= a.x); }

/// Where the line through a and b is at u. An edge that stands on u counts with its first point.
double height_at(Vec3 a, Vec3 b, double u)
{
    if (a.x == b.x && u == a.x) {
        return a.z;
    }
    return (a.z - b.z) * ((u - a.x) / (a.x - b.x)) + a.z;
}

} // namespace

Sampler::Sampler(std::int64_t clock_seconds)
{
    generator_.seed(static_cast<std::uint32_t>(clock_seconds));
}

void Sampler::restart(std::int32_t seed)
{
    const std::int64_t widened = wrapped_absolute(seed);
    generator_.seed(static_cast<std::uint64_t>(widened));
}

bool Sampler::coin() { return generator_.next() > 0.5; }

double Sampler::fraction() { return generator_.next(); }

std::int32_t Sampler::between(std::int32_t a, std::int32_t b)
{
    if (a == b) {
        return a;
    }
    const std::int32_t low = a < b ? a : b;
    const std::int32_t high = a < b ? b : a;
    const std::int32_t span = wrapped_difference(high, low);
    return to_int32(low + span * generator_.next() + 0.5);
}

double Sampler::between(double a, double b)
{
    if (a == b) {
        return a;
    }
    const double low = a < b ? a : b;
    const double high = a < b ? b : a;
    return (high - low) * generator_.next() + low;
}

Vec3 Sampler::point_on(const Face& face)
{
    if (face.points.size() < 3) {
        return {};
    }
    const Vec3 origin = face.points[0];
    const Frame frame(face.points[1] - face.points[0], unit(face.normal));
    std::vector<Vec3> local = face.points;
    frame.to_local(local, origin);

    double min_x = local[0].x;
    double max_x = local[0].x;
    for (const Vec3& p : local) {
        if (p.x < min_x) {
            min_x = p.x;
        }
        if (p.x > max_x) {
            max_x = p.x;
        }
    }
    const double u = between(min_x, max_x);

    std::vector<double> heights;
    for (std::size_t i = 0; i + 1 < local.size() && heights.size() < 2; ++i) {
        if (reaches(local[i], local[i + 1], u)) {
            heights.push_back(height_at(local[i], local[i + 1], u));
        }
    }
    if (heights.size() < 2) {
        heights.push_back(height_at(local.back(), local.front(), u));
    }
    if (heights.size() < 2) {
        heights.push_back(0.0);
    }
    const double v = between(heights[0], heights[1]);

    std::vector<Vec3> point{{u, 0.0, v}};
    frame.to_global(point, origin);
    return point[0];
}

} // namespace literal
