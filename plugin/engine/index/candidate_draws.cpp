// SPDX-License-Identifier: MIT
#include "plugin/engine/index/candidate_draws.h"

namespace dastrel {

namespace {

constexpr std::size_t fewest_ahead = 2;

/// Outputs of the generator that one candidate takes at most: polygon, column, height.
constexpr int max_outputs = 3;

} // namespace

candidate_draws::candidate_draws(face6_typ* polygons, int count, random& draws,
                                 position_index& index, double spacing)
    : polygon_count(count), generator(draws), answers(index), widest(spacing),
      faces(polygons, count)
{}

random& candidate_draws::sampler()
{
    if (taken < drawn) {
        generator.mti = ahead[taken - 1].end;
        taken = drawn;
        max_ahead = fewest_ahead;
    }
    return generator;
}

void candidate_draws::draw_ahead()
{
    taken = 0;
    drawn = 0;
    int poly = generator.z_zakresu(0, polygon_count - 1);
    for (;;) {
        draw_typ& draw = ahead[drawn++];
        draw.candidate.poly = poly;
        draw.candidate.pos = faces[poly].face.draw(generator);
        draw.end = generator.mti;
        // A batch ends before the generator makes its next block: it cannot go back over that.
        const bool last = drawn == max_ahead || generator.mti + max_outputs > random::block;
        if (generator.mti < random::block) {
            poly = generator.z_zakresu(0, polygon_count - 1);
            faces.prefetch(poly);
        }
        answers.prefetch_query(drawn - 1, draw.candidate.pos, widest);
        if (last) {
            generator.mti = draw.end;
            break;
        }
    }
    if (max_ahead < ahead.size())
        ++max_ahead;
}

} // namespace dastrel
