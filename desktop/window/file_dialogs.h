// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include <QString>

namespace desktop {

/// The folder that was used last for a purpose, such as "objects"; empty: none yet.
[[nodiscard]] std::filesystem::path last_folder(const char* purpose);

/// Remembers the folder of a file for a purpose.
void remember_folder(const char* purpose, const QString& file);

/// The path of a file that a person named, with this ending where there is none.
[[nodiscard]] std::filesystem::path with_ending(const QString& file, const char* ending);

} // namespace desktop
