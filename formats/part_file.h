// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace formats {

/// Common prefix of the names of all temporary ("part") files of a target. The same for every run,
/// different for other targets in the folder, and short even if the target's name is long.
[[nodiscard]] std::string part_file_prefix(const std::filesystem::path& target);

/// Locks an open part file, which marks it as being written until its descriptor is closed or the
/// process ends.
/// @return false if another run removed the file, or is about to, before it was locked: create
///         another one. True if the file system does not support locks; then no run removes it.
[[nodiscard]] bool lock_part_file(int descriptor) noexcept;

/// Removes part files of this target that belong to this user and are not locked. Failures are
/// ignored.
/// @param target  path with symbolic links resolved
void remove_abandoned_part_files(const std::filesystem::path& target) noexcept;

/// Copies owner, group and permissions of the target to an open part file, as far as the system
/// allows. If owner or group cannot be copied, permissions are reduced so that nobody gains access;
/// setuid and setgid are never set. Does nothing if the target does not exist.
void copy_access(int descriptor, const std::filesystem::path& target) noexcept;

} // namespace formats
