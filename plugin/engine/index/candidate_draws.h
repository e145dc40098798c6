// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "plugin/engine/index/planar_face_cache.h"
#include "plugin/engine/index/position_index.h"
#include "plugin/geometry/LW6-XYZ.h"
#include "plugin/random/LW6-random2.h"

namespace dastrel {

class face6_typ;

/// A random point of a random ground polygon.
struct candidate_draw {
    int poly = 0;
    XYZ6_typ pos;
};

/// Draws the candidates for positions: for each a polygon number, then a point of that polygon.
///
/// What is drawn does not depend on which candidates are accepted. So several are drawn ahead, and
/// the memory that their spacing tests read is prefetched while the ones before them are tested.
/// A draw for another purpose in between, as of a heading, first takes the generator back to its
/// state after the current candidate: the sequence is that of drawing one candidate at a time.
class candidate_draws {
public:
    /// `polygons`: `count` records, at least one. `draws` is the run's generator. `spacing`: the
    /// largest distance that `index` is asked for. All references must outlive this object.
    candidate_draws(face6_typ* polygons, int count, random& draws, position_index& index,
                    double spacing);

    /// The next candidate, valid until the next call. `index` then expects a question about it.
    const candidate_draw& next()
    {
        if (taken == drawn)
            draw_ahead();
        answers.select_query(taken);
        return ahead[taken++].candidate;
    }

    /// The generator, in its state after the last candidate.
    random& sampler();

    /// The area of a polygon, as calc_poly_area gives it.
    double area(int poly) { return faces[poly].area; }

    /// The pitch of a polygon's normal, as normal_pitch gives it.
    double pitch(int poly) { return faces[poly].pitch; }

    /// The heading of a polygon's normal; returns as normal_heading does.
    bool heading(int poly, double& heading)
    {
        const planar_face& face = faces[poly];
        if (face.has_heading)
            heading = face.heading;
        return face.has_heading;
    }

private:
    struct draw_typ {
        candidate_draw candidate;
        std::int32_t end = 0; ///< state of the generator after this draw
    };

    void draw_ahead();

    int polygon_count;
    random& generator;
    position_index& answers;
    double widest;
    planar_face_cache faces;
    std::array<draw_typ, position_index::max_queries> ahead;
    std::size_t drawn = 0;
    std::size_t taken = 0;
    std::size_t max_ahead = 2; ///< grows with each batch, shrinks when a batch is cut short
};

} // namespace dastrel
