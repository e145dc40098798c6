// SPDX-License-Identifier: MIT
#include "tests/literal/positions.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "tests/literal/kernel/integers.h"

namespace literal {

namespace {

// The bounds of a random heading are pi in single precision, unlike the heading along -X.
constexpr double single_pi = 3.1415927410125732;
constexpr double pi = 3.141592653589793;
constexpr double half_pi = 1.5707963267948966;
constexpr double nearly_zero = 0.001;

/// A place that was drawn but not yet taken.
struct Candidate {
    std::int32_t poly = 0;
    Vec3 pos;
    double area = 0.0;
    double weight = 0.0;
};

/// True where the density of the ground lets a clone stand; changes the spacing to that density.
bool density_allows(double weight, Sampler& run_sampler, double& spacing)
{
    double v = weight * 100.0;
    if (v < -1.0) {
        spacing = spacing * (-v / 20.0 + 1.0);
    } else if (v > 1.0) {
        spacing = spacing / (v / 20.0 + 1.0);
    }
    v = v + 100.0;
    if (v <= 20.0) {
        return false;
    }
    return run_sampler.between(std::int32_t{1}, to_int32(v)) > 4;
}

bool fits(const Layout& layout, const Candidate& candidate, double spacing,
          const Settings& settings, Sampler& run_sampler)
{
    double d = spacing;
    if (settings.size_poly_area == 1 && layout.mean_area > candidate.area) {
        double ratio = candidate.area / layout.mean_area;
        if (ratio < 0.5) {
            ratio = 0.5;
        }
        d = spacing * ratio;
    }
    if (settings.density_wg != 0 && !density_allows(candidate.weight, run_sampler, d)) {
        return false;
    }
    const Vec3 pos = candidate.pos;
    for (const Position& q : layout.positions) {
        if (q.pos.x > pos.x + d) {
            return true;
        }
        if (q.pos.x > pos.x - d && d > distance(pos, q.pos)) {
            return false;
        }
    }
    return true;
}

Position& insert(std::list<Position>& positions, Vec3 pos)
{
    Position added;
    added.pos = pos;
    if (positions.empty() || positions.front().pos.x > pos.x) {
        positions.push_front(added);
        return positions.front();
    }
    auto q = positions.begin();
    for (;;) {
        const auto following = std::next(q);
        if (following == positions.end() || following->pos.x > pos.x) {
            return *positions.insert(following, added);
        }
        q = following;
    }
}

double pitch_of(Vec3 n)
{
    if (-1.0 < n.y && n.y < 1.0) {
        return std::acos(n.y);
    }
    return 0.0;
}

double heading_of(Vec3 n, Sampler& sampler)
{
    if (n.z < -nearly_zero || n.z > nearly_zero) {
        const double h = std::acos(n.x / std::sqrt(n.x * n.x + n.z * n.z));
        return n.z < 0.0 ? -h : h;
    }
    if (n.x > nearly_zero) {
        return 0.0;
    }
    if (n.x < -nearly_zero) {
        return pi;
    }
    return sampler.between(-single_pi, single_pi);
}

} // namespace

Layout draw_positions(const std::vector<Face>& faces, const Settings& settings,
                      const WeightReader& weights, Sampler& run_sampler)
{
    Layout layout;
    const auto count = static_cast<std::int32_t>(faces.size());
    const double area = total_area(faces);
    const double base_spacing = settings.distribution * std::sqrt(area / settings.clone_num);
    layout.mean_area = area / count;

    Sampler sampler(0);
    sampler.restart(settings.seed);
    const SceneMap* density = weights.chosen(settings.density_wg);

    Candidate candidate;
    for (std::int32_t i = 0; i < settings.clone_num; ++i) {
        std::int64_t tries = 0;
        for (;;) {
            candidate.poly = sampler.between(std::int32_t{0}, count - 1);
            const Face& face = faces[static_cast<std::size_t>(candidate.poly)];
            candidate.pos = sampler.point_on(face);
            if (settings.size_poly_area == 1) {
                candidate.area = face_area(face);
            }
            if (settings.density_wg != 0) {
                candidate.weight = weights.mean(face.polygon, density);
            }
            ++tries;
            if (tries > settings.iterations) {
                break;
            }
            const double tried = static_cast<double>(tries) / settings.iterations;
            const double spacing = base_spacing / (tried + 1.0);
            if (fits(layout, candidate, spacing, settings, run_sampler)) {
                break;
            }
        }

        Position& position = insert(layout.positions, candidate.pos);
        position.poly = candidate.poly;
        if (settings.size_poly_area == 1) {
            position.area = candidate.area;
        }
        if (settings.h_align == 1 || settings.p_align == 1) {
            const Face& face = faces[static_cast<std::size_t>(candidate.poly)];
            double p = pitch_of(face.normal);
            const double h = heading_of(face.normal, sampler);
            if (settings.p_angle_wg != 0) {
                const SceneMap* map = weights.chosen(settings.p_angle_wg);
                if (settings.p_absolute == 1) {
                    p = half_pi;
                }
                p = p + weights.mean(face.polygon, map) * half_pi;
            }
            position.norm_p = p;
            position.norm_h = h;
        }
    }
    return layout;
}

} // namespace literal
