// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "modeler/form_panel.h"
#include "modeler/modeler.h"

namespace desktop {

/// Why a run with the panel's values is not worth beginning: its clones alone take more than a file
/// can hold, they bring their layer more types of polygons or kinds of polygon tags than one can
/// have, or their places take more than there is memory. Empty when that is not certain, and for a
/// panel without a number of clones.
/// @param own_layer  whether the clones get a layer of their own
[[nodiscard]] std::string run_size_problem(const modeler::Modeler& session,
                                           const modeler::FormPanel& panel, bool own_layer);

} // namespace desktop
