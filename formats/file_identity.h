// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace formats {

/// Which file a path leads to, whatever the path's spelling: links, hard links, `.` and `..`
/// included. Two identities are equal exactly if what is written to one path is found at the other.
struct FileIdentity {
    std::uint64_t device = 0;       ///< of the file, or of the folder in which it would be made
    std::uint64_t inode = 0;        ///< of the same
    std::filesystem::path new_name; ///< in that folder; empty for a file that exists
    std::filesystem::file_type type = std::filesystem::file_type::none; ///< or `not_found`

    bool operator==(const FileIdentity&) const = default;
};

/// The identity of the file at a path, or of the one that writing to the path would make. None
/// where the system cannot tell, as in a folder that does not exist.
[[nodiscard]] std::optional<FileIdentity> identify_file(const std::filesystem::path& path);

/// The identity of what an open descriptor belongs to.
[[nodiscard]] std::optional<FileIdentity> identify_descriptor(int descriptor);

} // namespace formats
