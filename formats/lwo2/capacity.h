// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace formats::lwo2 {

// How much a file may have of everything. The reader and the writer keep to the same numbers, so
// that what is written can be read.

/// How many points or polygons an index can tell apart.
constexpr std::uint32_t index_limit = 0x1000000;

/// Most points of one polygon: ten bits hold the count, and a curve has four more.
constexpr std::uint32_t polygon_point_limit = 0x3FF;
constexpr std::uint32_t curve_point_limit = 0x3FFF;

/// How many tags a polygon's number of two bytes can tell apart.
constexpr std::size_t tag_limit = 65536;

// The format knows a handful of these two and sets no limit. Each costs a step wherever they are
// looked up, so this room does.

/// Types of polygons in one layer.
constexpr std::size_t polygon_type_limit = 256;
/// Kinds of polygon tags in one layer, surfaces aside.
constexpr std::size_t tag_kind_limit = 256;

} // namespace formats::lwo2
