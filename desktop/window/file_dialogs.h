// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include <QString>

namespace desktop {

/// The folder last used for a purpose, such as "objects"; empty: none yet.
[[nodiscard]] std::filesystem::path last_folder(const char* purpose);

/// Saves the folder of a file as the last one used for a purpose.
void remember_folder(const char* purpose, const QString& file);

/// The path of a file name entered by the user; appends `ending` if it has no extension.
[[nodiscard]] std::filesystem::path with_ending(const QString& file, const char* ending);

} // namespace desktop
