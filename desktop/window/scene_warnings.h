// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "desktop/window/workspace.h"

namespace desktop {

/// What a person should know of ground and model before a run, as the command line says it, with
/// what helps in the window: sentences without their full stop.
[[nodiscard]] std::vector<std::string> scene_warnings(const Workspace& workspace);

/// What to do where no layer with polygons is in the background, so that a command that clones the
/// background refuses to run; empty: one is.
[[nodiscard]] std::string missing_model(const Workspace& workspace);

} // namespace desktop
