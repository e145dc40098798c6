// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "modeler/roles.h"

namespace desktop {

/// A recovery file: a scene that was saved because a window ended while a command ran.
struct KeptScene {
    std::filesystem::path file; ///< LWO2, with all layers
    std::string title;
    std::vector<modeler::LayerRole> roles; ///< one per layer
};

/// A unique path for a recovery file in $XDG_STATE_HOME/dastrel/recovery (default
/// ~/.local/state/dastrel/recovery). Creates the folder, not the file.
/// @throws std::filesystem::filesystem_error, std::runtime_error
[[nodiscard]] std::filesystem::path new_kept_file();

/// Writes title and roles to a note beside the recovery file. Call it before writing the scene: the
/// scene is found as soon as its file exists. @throws formats::FileError
void write_kept_note(const KeptScene& scene);

/// All recovery files, oldest first. Other files are ignored.
[[nodiscard]] std::vector<KeptScene> kept_scenes();

/// Removes a recovery file and its note. Failures are ignored.
void remove_kept(const std::filesystem::path& file) noexcept;

} // namespace desktop
