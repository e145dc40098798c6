// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/literal/kernel/sampler.h"
#include "tests/literal/scene.h"

namespace literal {

/// What was drawn for the latest clone. It outlives a run: a number of morph maps drawn in one run
/// is appended in later runs that draw none.
struct CloneDraws {
    double heading = 0.0;
    double pitch = 0.0;
    double bank = 0.0;
    double size_x = 0.0;
    double size_y = 0.0;
    double size_z = 0.0;
    std::int32_t morph_number = 0;
};

/// Copies the background of a scene to one position after another.
class CloneCopier {
public:
    /// All arguments must outlive the copier. `size_weights` holds one weight per usable face
    /// when a size map is chosen and is not read otherwise.
    CloneCopier(const Scene& scene, const Settings& settings,
                const std::vector<double>& size_weights, double mean_area, Sampler& sampler,
                CloneDraws& draws, Result& result);

    /// Adds clone number `index`, counting from 0, at `position`.
    void copy(std::int32_t index, const Position& position);

private:
    /// A background point and its copy in the current clone.
    struct Pair {
        std::size_t old_point = 0;
        std::size_t new_point = 0;
    };

    [[nodiscard]] Vec3 transformed(Vec3 point, const Position& position);
    [[nodiscard]] std::size_t copied_point(std::size_t old_point, std::int32_t index,
                                           const Position& position);
    void draw(const Position& position);
    void copy_polygon(std::size_t polygon, std::int32_t index, const Position& position);
    void carry_maps(const Pair& pair, std::int32_t index, const Position& position);
    void carry_unchanged(const Pair& pair, const std::string& type, int dimension);
    void carry_morphs(const Pair& pair, const Position& position);
    void write(std::size_t point, const std::string& type, const std::string& name,
               const std::vector<float>& value);

    const Scene& scene_;
    const Settings& settings_;
    const std::vector<double>& size_weights_;
    double mean_area_;
    Sampler& sampler_;
    CloneDraws& draws_;
    Result& result_;
    std::vector<Pair> pairs_;
};

} // namespace literal
