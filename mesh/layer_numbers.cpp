// SPDX-License-Identifier: MIT
#include "mesh/layer_numbers.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace mesh {

namespace {

constexpr std::size_t number_count = 0xFFFF; // in a file the highest stands for no parent

} // namespace

std::optional<std::uint16_t> free_layer_number(const Document& document)
{
    std::vector<bool> taken(number_count);
    std::size_t after_highest = 0;
    const auto take = [&](std::size_t number) {
        if (number >= number_count)
            return;
        taken[number] = true;
        after_highest = std::max(after_highest, number + 1);
    };
    for (const Layer& layer : document.layers) {
        take(layer.number);
        if (layer.parent)
            take(*layer.parent);
    }
    if (after_highest < number_count)
        return static_cast<std::uint16_t>(after_highest);
    const auto free = std::find(taken.begin(), taken.end(), false);
    if (free == taken.end())
        return std::nullopt;
    return static_cast<std::uint16_t>(free - taken.begin());
}

} // namespace mesh
