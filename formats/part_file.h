// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace formats {

/// How the names of all part files of a target begin: the same for every run that writes this
/// target, another for other targets of the folder. Short, whatever the target's name is.
[[nodiscard]] std::string part_file_prefix(const std::filesystem::path& target);

/// Marks an open part file as being written, until its descriptor is closed or the process ends.
/// @return false when the file was removed, or is about to be, because it was taken for an
///         abandoned one before it was marked: another has to be made. True where the file system
///         knows no locks: nobody removes the file there.
[[nodiscard]] bool lock_part_file(int descriptor) noexcept;

/// Removes the part files of this target, made by this user, that no living process writes. What
/// cannot be removed is left: the caller does not depend on it.
/// @param target  links followed
void remove_abandoned_part_files(const std::filesystem::path& target) noexcept;

/// Gives an open part file the owner, the group and the permissions of the target that it will
/// replace, as far as the system allows it. Permissions become narrower where owner or group cannot
/// be kept, so that nobody gains access; setuid and setgid are never set. Does nothing when there
/// is no target.
void copy_access(int descriptor, const std::filesystem::path& target) noexcept;

} // namespace formats
