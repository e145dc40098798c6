// SPDX-License-Identifier: MIT
#include "tests/whole/random_settings.h"

#include <cstdint>
#include <limits>

namespace whole {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

/// Mostly a number of the range, at times one that no user means.
double odd(Numbers& numbers, double low, double high)
{
    if (numbers.chance(1))
        return numbers.one_of({infinity, -infinity, infinity - infinity, 1e300, -1e-300, -0.0});
    return numbers.real(low, high);
}

/// A pair of limits: equal, in order, or the wrong way round.
void limits(Numbers& numbers, double& low, double& high)
{
    low = odd(numbers, -3.5, 3.5);
    high = numbers.chance(25) ? low : odd(numbers, -3.5, 3.5);
}

} // namespace

literal::Settings random_settings(Numbers& numbers, int maps)
{
    literal::Settings s;
    s.clone_num = numbers.chance(5) ? numbers.whole(-3, 0) : numbers.whole(1, 25);
    s.distribution = odd(numbers, -0.2, 2.5);
    s.iterations = numbers.chance(80) ? numbers.whole(1, 20) : numbers.whole(-2, 0);
    s.seed = numbers.chance(60) ? numbers.whole(-40, 40) : numbers.any();
    if (numbers.chance(3))
        s.seed = std::numeric_limits<std::int32_t>::min();
    s.size_indep = numbers.whole(0, 1);
    s.size_var_x = odd(numbers, -0.5, 1.2);
    s.size_var_y = numbers.chance(30) ? 0.0 : odd(numbers, 0.0, 1.2);
    s.size_var_z = odd(numbers, 0.0, 1.2);
    s.size_wg = numbers.chance(50) ? numbers.whole(0, maps) : 0;
    s.size_wg_influence = odd(numbers, -0.5, 2.0);
    s.size_poly_area = numbers.whole(0, 1);
    s.dep_power = odd(numbers, -0.5, 2.0);
    s.density_wg = numbers.chance(50) ? numbers.whole(0, maps) : 0;
    if (numbers.chance(80)) {
        limits(numbers, s.h_min, s.h_max);
        limits(numbers, s.p_min, s.p_max);
        limits(numbers, s.b_min, s.b_max);
    }
    s.h_align = numbers.whole(0, 1);
    s.p_align = numbers.whole(0, 1);
    s.jitter = numbers.chance(50) ? 0.0 : odd(numbers, -0.2, 1.5);
    s.slope_limits = numbers.chance(35) ? 1 : 0;
    if (numbers.chance(70)) {
        s.slope_min = odd(numbers, 0.0, 0.6);
        s.slope_max = odd(numbers, 0.4, 3.2);
    }
    s.p_angle_wg = numbers.chance(50) ? numbers.whole(0, maps) : 0;
    s.p_absolute = numbers.whole(0, 1);
    s.auto_morph_maps = numbers.chance(40) ? numbers.whole(-3, 5) : 0;
    return s;
}

} // namespace whole
