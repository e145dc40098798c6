// SPDX-License-Identifier: MIT
#include "picture/render/samples.h"

namespace picture {

namespace {

/// A bijective integer hash.
constexpr std::uint32_t mixed(std::uint32_t bits) noexcept
{
    bits ^= bits >> 16U;
    bits *= 0x9E3779B1U;
    bits ^= bits >> 15U;
    bits *= 0x85EBCA77U;
    bits ^= bits >> 13U;
    return bits;
}

constexpr std::uint32_t reversed(std::uint32_t bits) noexcept
{
    bits = (bits >> 16U) | (bits << 16U);
    bits = ((bits & 0x00FF00FFU) << 8U) | ((bits & 0xFF00FF00U) >> 8U);
    bits = ((bits & 0x0F0F0F0FU) << 4U) | ((bits & 0xF0F0F0F0U) >> 4U);
    bits = ((bits & 0x33333333U) << 2U) | ((bits & 0xCCCCCCCCU) >> 2U);
    return ((bits & 0x55555555U) << 1U) | ((bits & 0xAAAAAAAAU) >> 1U);
}

/// Nested uniform (Owen) scrambling of a bit-reversed number: flips each bit depending on the seed
/// and the lower bits only, which keeps the stratification of a sequence (A. Owen, "Randomly
/// permuted (t,m,s)-nets and (t,s)-sequences", 1995; by arithmetic after S. Laine and T. Karras,
/// "Stratified sampling for stochastic transparency", 2011). Adding, multiplying by odd numbers,
/// and xor with even multiples carry upwards only.
constexpr std::uint32_t scrambled(std::uint32_t bits, std::uint32_t seed) noexcept
{
    bits += seed;
    bits *= seed >> 16U | 1U;
    bits ^= bits * 0x7A4D27B2U;
    bits += seed >> 8U;
    bits ^= bits * 0x5C9E1F46U;
    bits *= seed << 1U | 1U;
    bits ^= bits * 0x31B6A7DCU;
    return bits;
}

/// The second dimension of the Sobol sequence, bit-reversed; the first dimension is the number
/// itself.
constexpr std::uint32_t second_axis(std::uint32_t number) noexcept
{
    number ^= number >> 16U;
    number ^= number >> 8U & 0x00FF00FFU;
    number ^= number >> 4U & 0x0F0F0F0FU;
    number ^= number >> 2U & 0x33333333U;
    number ^= number >> 1U & 0x55555555U;
    return number;
}

/// Converts the upper 24 bits to a float in [0, 1), exactly.
float share(std::uint32_t bits) noexcept
{
    return static_cast<float>(bits >> 8U) * (1.0F / 16777216.0F);
}

} // namespace

Samples::Samples(int x, int y, std::uint32_t number) noexcept
    : seed_(mixed(static_cast<std::uint32_t>(x) + mixed(static_cast<std::uint32_t>(y) + 1U))),
      number_(number)
{}

Sample2 Samples::draw(SampleUse use) const noexcept
{
    // The sequence is shuffled per use to decorrelate the uses. The shuffle permutes aligned blocks
    // of 2, 4, 8... points, so each block stays stratified.
    const std::uint32_t seed = mixed(seed_ + 0x632BE5ABU * (static_cast<std::uint32_t>(use) + 1U));
    const std::uint32_t number = reversed(scrambled(reversed(number_), seed));
    return {share(reversed(scrambled(number, mixed(seed + 1U)))),
            share(reversed(scrambled(second_axis(number), mixed(seed + 2U))))};
}

} // namespace picture
