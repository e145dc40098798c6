// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace picture {

/// A random point in the unit square [0, 1)^2.
struct Sample2 {
    float x = 0.0F;
    float y = 0.0F;
};

/// The purpose of a sample. Sequences for different purposes are uncorrelated.
enum class SampleUse : std::uint32_t { pixel, sun, sky };

/// The random points of one sample of one pixel. Deterministic: they depend only on pixel and
/// sample number. Over the samples of a pixel they form a (0,2)-sequence in base 2: any aligned 2^n
/// consecutive points have exactly one in each of 2^n equal boxes of any aspect.
class Samples {
public:
    Samples(int x, int y, std::uint32_t number) noexcept;

    [[nodiscard]] Sample2 draw(SampleUse use) const noexcept;

private:
    std::uint32_t seed_;
    std::uint32_t number_;
};

} // namespace picture
