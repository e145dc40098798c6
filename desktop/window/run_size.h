// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "modeler/form_panel.h"
#include "modeler/modeler.h"

namespace desktop {

/// Message if a run with the panel's values will certainly exceed a limit: the file size, the
/// polygon types or tag kinds of a layer, or the memory for the positions. Otherwise empty, also if
/// the panel has no number of clones.
/// @param own_layer  whether the clones go into a new layer
[[nodiscard]] std::string run_size_problem(const modeler::Modeler& session,
                                           const modeler::FormPanel& panel, bool own_layer);

} // namespace desktop
