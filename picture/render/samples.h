// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace picture {

/// Two numbers from 0 up to below 1.
struct Sample2 {
    float x = 0.0F;
    float y = 0.0F;
};

/// What a sample is drawn for. Draws for different uses are not related to each other.
enum class SampleUse : std::uint32_t { pixel, sun, sky };

/// The draws of one sample of one pixel. They depend on nothing but the pixel and the sample's
/// number: whoever makes a pixel, and whenever, draws the same. Over the samples of a pixel the
/// draws of one use cover the unit square evenly: of any 2^n from a multiple of it on, one lies in
/// each of 2^n equal boxes, however these divide the square along its two sides.
class Samples {
public:
    Samples(int x, int y, std::uint32_t number) noexcept;

    [[nodiscard]] Sample2 draw(SampleUse use) const noexcept;

private:
    std::uint32_t seed_;
    std::uint32_t number_;
};

} // namespace picture
