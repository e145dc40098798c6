// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "mesh/document.h"

namespace big_file {

/// A forest of equal trees in one layer, computed from nothing but the number of trees: 205 points
/// and 192 polygons each, with texture coordinates, a weight and the tree's own number for every
/// point.
[[nodiscard]] mesh::Document make_forest(std::uint32_t trees);

/// The first difference between a document and the forest, whose points and polygons may stand in
/// several layers one after another; empty when there is none. Every number is compared by its
/// bits.
[[nodiscard]] std::string difference_from_forest(const mesh::Document& document,
                                                 std::uint32_t trees);

} // namespace big_file
