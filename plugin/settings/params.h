// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace dastrel {

/// Every setting of a run. Angles are radians, percentages fractions (1.0 is 100 %), switches on
/// when exactly 1, weight maps indices into the panel's list, where 0 is "none". Nothing is checked
/// or clamped.
class params_typ {
public:
    params_typ();
    virtual ~params_typ() = default;

    std::int32_t akt_clone;       ///< index of the clone being made, from 0; set by the clone loop
    std::int32_t p_absolute;      ///< switch: the weighted pitch starts from a right angle
    std::int32_t auto_morph_maps; ///< N: morphs go to N + 1 numbered maps; 0: names are kept
    double dep_power;             ///< how strongly size follows the polygon's area
    double size_wg_influence;     ///< how strongly the size weight map scales
    std::int32_t size_wg;         ///< map that scales clones
    double slope_max;             ///< steepest slope of a ground polygon
    double slope_min;             ///< gentlest slope of a ground polygon
    std::int32_t slope_limits;    ///< switch: the two limits act
    double jitter;                ///< half-width of a random factor drawn for each point
    double distribution;          ///< spacing, relative to an even spread
    std::int32_t h_align;         ///< switch: the heading follows the normal
    std::int32_t p_align;         ///< switch: the pitch follows the normal
    double b_max;                 ///< limits of the random bank, pitch and heading
    double b_min;
    double p_max;
    double p_min;
    double h_max;
    double h_min;
    double size_var_x; ///< size variation; the only one unless sizes are independent
    double size_var_y;
    double size_var_z;
    std::int32_t size_indep;     ///< switch: X, Y and Z vary independently
    std::int32_t clone_num;      ///< number of clones
    std::int32_t iterations;     ///< tries before a position is taken untested
    std::int32_t size_poly_area; ///< switch: size and spacing follow the polygon's area
    std::int32_t seed;           ///< decides the positions
    std::int32_t density_wg;     ///< map that thins or packs the clones
    std::int32_t p_angle_wg;     ///< map that adds to each clone's pitch
};

/// Fills the open panel's controls from `settings`.
void set_params(params_typ* settings);

/// Reads the open panel's controls into `settings`; `akt_clone` stays.
void get_params(params_typ* settings);

} // namespace dastrel
