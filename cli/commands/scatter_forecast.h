// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace cli {

/// Rejects a run before the work if its result certainly exceeds a limit: the clones alone exceed
/// the file size of LWO2 or the polygon types or tag kinds of a layer, or their positions exceed
/// the available memory. Based on the requested number of clones and the size of the model.
/// @throws Failure (output, host)
void validate_result_size(const mesh::Document& document, std::span<const modeler::LayerRole> roles,
                          std::int64_t clones, bool own_layer, const std::string& output);

} // namespace cli
