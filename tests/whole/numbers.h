// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>

namespace whole {

/// Random choices that are the same on every system: drawn from the raw generator, because the
/// standard library's distributions differ between systems.
class Numbers {
public:
    explicit Numbers(std::uint32_t seed) : generator_(seed) {}

    /// A whole number from `low` to `high`, both included.
    [[nodiscard]] int whole(int low, int high)
    {
        const auto width = static_cast<std::uint32_t>(high - low) + 1u;
        return low + static_cast<int>(generator_() % width);
    }

    /// A number from `low` up to `high`.
    [[nodiscard]] double real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(generator_()) / 4294967296.0);
    }

    /// True in `percent` of 100 cases.
    [[nodiscard]] bool chance(int percent) { return whole(1, 100) <= percent; }

    template <typename Value> [[nodiscard]] Value one_of(std::initializer_list<Value> values)
    {
        return values.begin()[whole(0, static_cast<int>(values.size()) - 1)];
    }

    /// Any 32 bits.
    [[nodiscard]] std::int32_t any() { return static_cast<std::int32_t>(generator_()); }

private:
    std::mt19937 generator_;
};

} // namespace whole
