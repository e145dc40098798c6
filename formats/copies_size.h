// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace formats {

/// How much of everything one copy of a mesh has.
struct CopiedMesh {
    std::uint64_t points = 0;
    std::uint64_t polygons = 0;
    std::uint64_t corners = 0;     ///< points of all polygons
    std::uint64_t tags = 0;        ///< tags of all polygons
    std::uint64_t map_values = 0;  ///< points with a value, over all vertex maps
    std::uint64_t map_numbers = 0; ///< numbers of these values
};

/// Bytes that an LWO2 file with so many copies has at the least, whatever else is in it. Where the
/// copies take gigabytes, it is less than they take by a few percent.
/// @param copies  up to 2^32
[[nodiscard]] std::uint64_t least_size_of_copies(const CopiedMesh& each, std::uint64_t copies);

/// Refuses, before there are any, copies that no LWO2 file can hold. Passing does not promise that
/// the file will fit. @throws LimitError
void check_copies_fit(const CopiedMesh& each, std::uint64_t copies);

} // namespace formats
