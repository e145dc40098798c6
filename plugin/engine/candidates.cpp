// SPDX-License-Identifier: MIT
#include "plugin/engine/candidates.h"

#include "plugin/engine/index/dominant_axis.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"
#include "plugin/geometry/normal_angles.h"
#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"

namespace dastrel {

candidate_source::candidate_source(double spacing, int expected, random& draws)
    : generator(draws), positions(spacing, expected, dominant_axis(poly_data, num_polys)),
      drawn_ahead(poly_data, num_polys, draws, positions.index(), spacing)
{}

candidate_draw candidate_source::next_plain()
{
    const int poly = generator.z_zakresu(0, num_polys - 1);
    return {poly, generator.z_polygonu(&poly_data[poly])};
}

double candidate_source::area(int poly)
{
    return plain_lists ? calc_poly_area(poly, poly_data) : drawn_ahead.area(poly);
}

double candidate_source::pitch(int poly)
{
    return plain_lists ? normal_pitch(poly_data[poly].normal) : drawn_ahead.pitch(poly);
}

bool candidate_source::heading(int poly, double& heading)
{
    return plain_lists ? normal_heading(poly_data[poly].normal, heading)
                       : drawn_ahead.heading(poly, heading);
}

} // namespace dastrel
