// SPDX-License-Identifier: MIT
#include "modeler/several_models.h"

#include <algorithm>
#include <cstddef>

#include <fmt/format.h>

#include "mesh/plural.h"

namespace modeler {

std::string several_models(std::span<const std::string> models, std::uint64_t points)
{
    constexpr std::size_t most_named = 4;
    if (models.size() < 2)
        return {};
    const std::size_t named = std::min(models.size(), most_named);
    std::string names = models[0];
    for (std::size_t i = 1; i < named; ++i)
        names += (i + 1 == models.size() ? " and " : ", ") + models[i];
    if (models.size() > named)
        names += fmt::format(" and {} more", models.size() - named);
    return fmt::format("every clone is all {} models at once ({}; {})", models.size(), names,
                       mesh::counted(points, "point"));
}

} // namespace modeler
