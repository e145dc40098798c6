// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace cli {

/// Refuses a run, before its work, when it is certain that no file could hold the result (the
/// clones alone take more than LWO2 allows, or bring more types of polygons or kinds of tags than a
/// layer can hold), or that memory cannot hold the places of the clones.
/// The command makes all the clones that it is asked for, and copies all points that polygons of
/// the model have, with their map values.
/// @throws Failure (output, host)
void validate_result_size(const mesh::Document& document, std::span<const modeler::LayerRole> roles,
                          std::int64_t clones, bool own_layer, const std::string& output);

} // namespace cli
