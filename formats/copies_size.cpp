// SPDX-License-Identifier: MIT
#include "formats/copies_size.h"

#include <algorithm>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/write/limits.h"
#include "mesh/plural.h"

namespace formats {

namespace {

/// Bytes of one copy, with `index` bytes per index.
std::uint64_t size_of_one(const CopiedMesh& each, std::uint64_t index)
{
    constexpr std::uint64_t point = 12;
    constexpr std::uint64_t number = 4;
    constexpr std::uint64_t corner_count = 2;
    constexpr std::uint64_t tag = 2;
    return each.points * point + each.polygons * corner_count + each.corners * index +
           each.tags * (index + tag) + each.map_values * index + each.map_numbers * number;
}

} // namespace

std::uint64_t least_size_of_copies(const CopiedMesh& each, std::uint64_t copies)
{
    constexpr std::uint64_t short_index = 2;
    constexpr std::uint64_t long_index = 4;
    constexpr std::uint64_t layer = lwo2::index_limit;
    const std::uint64_t with_short = size_of_one(each, short_index);
    if (with_short > lwo2::Limits{}.file_size)
        return copies > 0 ? with_short : 0;
    // In each layer that the copies are divided into, the first copies have short indices. Two
    // consecutive layers together exceed the limit of one, in points or in polygons.
    const std::uint64_t layers =
        1 + 2 * (each.points * copies / layer) + 2 * (each.polygons * copies / layer);
    const std::uint64_t fewest = std::max<std::uint64_t>(1, std::min(each.points, each.polygons));
    const std::uint64_t shorts = std::min(copies, layers * (lwo2::first_long_index / fewest + 2));
    return shorts * with_short + (copies - shorts) * size_of_one(each, long_index);
}

void check_copies_fit(const CopiedMesh& each, std::uint64_t copies)
{
    const std::uint64_t least = least_size_of_copies(each, copies);
    const std::uint64_t most = lwo2::Limits{}.file_size;
    if (least > most)
        throw LimitError(
            fmt::format("{} of {} and {} would take at least {} bytes, more "
                        "than the {} that LWO2 can hold; make fewer clones, or spread them over "
                        "several files",
                        mesh::counted(copies, "clone"), mesh::counted(each.points, "point"),
                        mesh::counted(each.polygons, "polygon"), least, most));
}

} // namespace formats
