// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "mesh/layer.h"

namespace formats {

/// Refuses, before there are any, clones that would bring their layer more types of polygons or
/// kinds of polygon tags than one can hold.
/// @param target  the layer that the clones are added to
/// @param models  the layers that every clone is made of
/// @throws LimitError
void check_clone_kinds(const mesh::Layer& target, std::span<const mesh::Layer* const> models);

} // namespace formats
