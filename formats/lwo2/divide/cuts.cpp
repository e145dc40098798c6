// SPDX-License-Identifier: MIT
#include "formats/lwo2/divide/cuts.h"

#include <algorithm>

namespace formats::lwo2 {

namespace {

/// Number of positions per range; a long join blocks whole ranges at once.
constexpr std::uint32_t range_size = 4096;

} // namespace

Cuts::Cuts(std::uint32_t points)
    : closed_(std::size_t{points} / 64 + 1, 0), long_joins_(std::size_t{points} / range_size + 2, 0)
{}

void Cuts::join(std::uint32_t first, std::uint32_t last)
{
    const std::uint32_t begin = std::min(first, last) + 1;
    const std::uint32_t end = std::max(first, last) + 1;
    const std::uint32_t first_range = begin / range_size + 1;
    const std::uint32_t last_range = end / range_size;
    if (first_range >= last_range) {
        close(begin, end);
        return;
    }
    close(begin, first_range * range_size);
    ++long_joins_[first_range];
    --long_joins_[last_range];
    close(last_range * range_size, end);
}

void Cuts::close(std::uint32_t begin, std::uint32_t end)
{
    while (begin < end) {
        const std::uint32_t bit = begin % 64u;
        const std::uint32_t count = std::min(64u - bit, end - begin);
        closed_[begin / 64u] |= (~std::uint64_t{0} >> (64u - count)) << bit;
        begin += count;
    }
}

void Cuts::finish()
{
    std::int32_t joins = 0;
    for (std::uint32_t i = 0; i < long_joins_.size(); ++i) {
        joins += long_joins_[i];
        if (joins > 0)
            close(i * range_size, (i + 1) * range_size);
    }
}

std::optional<std::uint32_t> Cuts::last_in(Range places) const
{
    for (std::uint32_t place = places.end; place > places.begin; --place)
        if (is_free(place - 1))
            return place - 1;
    return std::nullopt;
}

} // namespace formats::lwo2
