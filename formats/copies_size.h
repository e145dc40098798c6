// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace formats {

/// Element counts of one copy of a mesh.
struct CopiedMesh {
    std::uint64_t points = 0;
    std::uint64_t polygons = 0;
    std::uint64_t corners = 0;     ///< polygon corners
    std::uint64_t tags = 0;        ///< polygon tags
    std::uint64_t map_values = 0;  ///< values in all vertex maps
    std::uint64_t map_numbers = 0; ///< floats in these values
};

/// Lower bound of the size in bytes of an LWO2 file with this many copies. For gigabytes of copies
/// it is a few percent below their actual size.
/// @param copies  up to 2^32
[[nodiscard]] std::uint64_t least_size_of_copies(const CopiedMesh& each, std::uint64_t copies);

/// Checks the lower bound against the size limit of LWO2 before any copies exist. Passing does not
/// guarantee that the file will fit. @throws LimitError
void check_copies_fit(const CopiedMesh& each, std::uint64_t copies);

} // namespace formats
