// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "modeler/form_panel.h"
#include "modeler/modeler.h"

namespace desktop {

/// Why a run with the panel's values is not worth beginning: its clones alone take more than a file
/// can hold, or their places more than there is memory. Empty when that is not certain, and for a
/// panel without a number of clones.
[[nodiscard]] std::string run_size_problem(const modeler::Modeler& session,
                                           const modeler::FormPanel& panel);

} // namespace desktop
