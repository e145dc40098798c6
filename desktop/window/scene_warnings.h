// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "desktop/window/workspace.h"

namespace desktop {

/// Warnings about ground and model before a run, with advice for the window. Sentences without a
/// full stop.
[[nodiscard]] std::vector<std::string> scene_warnings(const Workspace& workspace);

/// Advice if no background layer has polygons, so that there is nothing to clone; otherwise empty.
[[nodiscard]] std::string missing_model(const Workspace& workspace);

} // namespace desktop
