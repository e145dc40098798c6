// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "desktop/window/workspace.h"

namespace desktop {

/// What a person should know of ground and model before a run, as the command line says it, with
/// what helps in the window: sentences without their full stop.
[[nodiscard]] std::vector<std::string> scene_warnings(const Workspace& workspace);

} // namespace desktop
