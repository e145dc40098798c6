// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace formats::lwo2 {

// Limits shared by the reader and the writer, so that every written file can be read.

/// Number of points or polygons that an index of the format can address.
constexpr std::uint32_t index_limit = 0x1000000;

/// Maximum number of points of a polygon (10 bits) and of a curve (14 bits).
constexpr std::uint32_t polygon_point_limit = 0x3FF;
constexpr std::uint32_t curve_point_limit = 0x3FFF;

/// Number of tags that a two-byte tag index can address.
constexpr std::size_t tag_limit = 65536;

// The format sets no limit for these two and defines fewer than ten of each. They are searched
// linearly, so we set a limit.

/// Maximum number of polygon types in one layer.
constexpr std::size_t polygon_type_limit = 256;
/// Maximum number of polygon tag kinds in one layer, not counting surfaces.
constexpr std::size_t tag_kind_limit = 256;

} // namespace formats::lwo2
