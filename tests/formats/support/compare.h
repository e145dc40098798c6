// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "mesh/document.h"

namespace test {

/// The first difference between two documents, numbers compared by their bits; empty when there is
/// none. The boxes that a file had are left out: writing computes them anew.
[[nodiscard]] std::string difference(const mesh::Document& a, const mesh::Document& b);

/// The first difference between the points, polygons and maps of two layers.
[[nodiscard]] std::string mesh_difference(const mesh::Layer& a, const mesh::TagList& a_tags,
                                          const mesh::Layer& b, const mesh::TagList& b_tags);

} // namespace test
