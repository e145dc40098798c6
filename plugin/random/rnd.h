// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace dastrel {

/// The Mersenne Twister MT19937 as first published in 1998: seeded by the linear congruential
/// generator 69069, giving doubles in [0, 1], both ends included.
/// Source: M. Matsumoto, T. Nishimura, "Mersenne Twister: A 623-Dimensionally Equidistributed
/// Uniform Pseudo-Random Number Generator", ACM TOMACS 8 (1998).
class CRandom {
public:
    CRandom();
    CRandom(const CRandom&) = delete;
    CRandom& operator=(const CRandom&) = delete;
    ~CRandom();

    /// Starts the sequence of `seed`, of which the low 32 bits count; exactly 0 stands for 4357.
    void randomize(std::uint64_t seed);

    /// The next output. A generator never seeded gives the sequence of 4357.
    double get()
    {
        if (mti >= block)
            regenerate();
        std::uint64_t y = mt[mti];
        mti = mti + 1;
        y ^= y >> 11;
        y ^= (y << 7) & 0x9d2c5680;
        y ^= (y << 15) & 0xefc60000;
        y ^= y >> 18;
        // the double nearest to 1 / (2^32 - 1): both ends of [0, 1] can be reached
        return static_cast<double>(y) * 2.3283064370807974e-10;
    }

    /// Outputs between two regenerations: as far as `mti` can be set back.
    static constexpr std::int32_t block = 624;

    std::uint64_t* mt; ///< owned array of 624 words; the upper 32 bits of each are 0
    std::int32_t mti;  ///< next word to output; 624: regenerate first; 625: never seeded

private:
    void regenerate();
};

} // namespace dastrel
