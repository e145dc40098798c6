// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace formats {

/// Identifies the file that a path refers to, independent of spelling, symbolic links, hard links,
/// `.` and `..`. Two identities are equal if and only if both paths refer to the same file.
struct FileIdentity {
    std::uint64_t device = 0;       ///< st_dev of the file or, if it does not exist, of its folder
    std::uint64_t inode = 0;        ///< st_ino of the same
    std::filesystem::path new_name; ///< name of a file that does not exist; otherwise empty
    std::filesystem::file_type type = std::filesystem::file_type::none; ///< or `not_found`

    bool operator==(const FileIdentity&) const = default;
};

/// The identity of the file at a path, or of the file that writing to the path would create. Empty
/// on failure, for example if the folder does not exist.
[[nodiscard]] std::optional<FileIdentity> identify_file(const std::filesystem::path& path);

/// The identity of the file of an open descriptor.
[[nodiscard]] std::optional<FileIdentity> identify_descriptor(int descriptor);

} // namespace formats
