// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "mesh/layer.h"

namespace formats {

/// Checks before a run that the clones will not exceed the limits of polygon types and tag kinds
/// of a layer.
/// @param target  the layer to which the clones are added
/// @param models  the layers of which every clone consists
/// @throws LimitError
void check_clone_kinds(const mesh::Layer& target, std::span<const mesh::Layer* const> models);

} // namespace formats
