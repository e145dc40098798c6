// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace literal {

/// MT19937 with the seeding of its first publication (the multiplier 69069) and output on [0, 1].
class Generator {
public:
    /// Restarts the sequence. Only the low 32 bits of the seed matter, but only an exact 0 stands
    /// for 4357.
    void seed(std::uint64_t value)
    {
        if (value == 0) {
            value = 4357;
        }
        for (std::uint64_t& word : words_) {
            word = value & 0xffff0000U;
            value = 69069U * value + 1U;
            word |= (value & 0xffff0000U) >> 16U;
            value = 69069U * value + 1U;
        }
        next_ = word_count;
    }

    /// The next tempered 32-bit output. A generator never seeded behaves as seeded with 4357.
    [[nodiscard]] std::uint64_t next_word()
    {
        if (next_ >= word_count) {
            if (next_ == never_seeded) {
                seed(0);
            }
            regenerate();
        }
        std::uint64_t y = words_[next_];
        ++next_;
        y ^= y >> 11U;
        y ^= (y << 7U) & 0x9d2c5680U;
        y ^= (y << 15U) & 0xefc60000U;
        y ^= y >> 18U;
        return y;
    }

    /// The next output on the closed interval from 0 to 1.
    [[nodiscard]] double next()
    {
        return static_cast<double>(next_word()) * 2.3283064370807974e-10;
    }

private:
    static constexpr std::size_t word_count = 624;
    static constexpr std::size_t never_seeded = 625;

    void regenerate()
    {
        for (std::size_t k = 0; k < word_count; ++k) {
            const std::uint64_t following = words_[k + 1 < word_count ? k + 1 : 0];
            const std::uint64_t ahead = words_[k < 227 ? k + 397 : k - 227];
            const std::uint64_t y = (words_[k] & 0x80000000U) | (following & 0x7fffffffU);
            words_[k] = ahead ^ (y >> 1U) ^ ((y & 1U) != 0 ? 0x9908b0dfU : 0U);
        }
        next_ = 0;
    }

    std::vector<std::uint64_t> words_ = std::vector<std::uint64_t>(word_count);
    std::size_t next_ = never_seeded;
};

} // namespace literal
