// SPDX-License-Identifier: MIT
#include "mesh/clone_numbers.h"

#include <cstddef>

namespace mesh {

namespace {

std::size_t points_of_clones(const Layer& layer) noexcept
{
    const VertexMap* const numbers = layer.find_map(map_wght, clone_number_map);
    return numbers != nullptr ? numbers->size() : 0;
}

} // namespace

bool holds_clones(const Layer& layer) noexcept { return points_of_clones(layer) > 0; }

bool holds_only_clones(const Layer& layer) noexcept
{
    return holds_clones(layer) && points_of_clones(layer) >= layer.points.size();
}

} // namespace mesh
