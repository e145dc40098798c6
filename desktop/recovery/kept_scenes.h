// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "modeler/roles.h"

namespace desktop {

/// A scene that was written when a window ended in the middle of a command.
struct KeptScene {
    std::filesystem::path file; ///< LWO2, with all layers
    std::string title;
    std::vector<modeler::LayerRole> roles; ///< one for each layer of the document that was written
};

/// A place for a scene that may have to be kept: a name that no other has, in the folder for such
/// scenes ($XDG_STATE_HOME/dastrel/recovery, or ~/.local/state/... without that), which is made
/// where it is not there. @throws std::filesystem::filesystem_error, std::runtime_error
[[nodiscard]] std::filesystem::path new_kept_file();

/// Writes title and roles beside the file of a kept scene. To be called before that is written: a
/// scene is found as soon as its file is there. @throws formats::FileError
void write_kept_note(const KeptScene& scene);

/// The kept scenes, oldest first. What is no such scene is passed over.
[[nodiscard]] std::vector<KeptScene> kept_scenes();

/// Removes the file of a kept scene and the note beside it.
void remove_kept(const std::filesystem::path& file) noexcept;

} // namespace desktop
