// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace formats {

/// Writes a file atomically.
///
/// The bytes go to a temporary file beside the target, which `commit` flushes to the disk and
/// renames over the target. Until then, and after any failure, the target is unchanged. If the
/// target is a symbolic link, the file it refers to is replaced. An existing target keeps its
/// permissions and, where the system allows it, owner and group; a new one gets the permissions of
/// the umask. Temporary files of killed runs for the same target are removed. A pipe, a device or
/// /dev/stdout is written directly.
class FileWriter {
public:
    /// Opens the file for writing. @throws FileError
    explicit FileWriter(const std::filesystem::path& path);
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;
    /// Removes the temporary file unless it was committed.
    ~FileWriter();

    /// Appends bytes. Unbuffered: pass large blocks. @throws FileError
    void write(std::span<const std::byte> bytes);

    /// Flushes the file and renames it over the target. Call once, last. @throws FileError
    void commit();

private:
    void open_beside();

    std::filesystem::path path_;      ///< as given; for messages
    std::filesystem::path target_;    ///< symbolic links resolved
    std::filesystem::path temporary_; ///< empty if the target is written directly
    int descriptor_ = -1;
    int slot_ = -1; ///< index in the table of temporary files (see remove_unfinished_files)
};

/// The path with symbolic links resolved; the final target need not exist.
/// @throws FileError for links in a loop
[[nodiscard]] std::filesystem::path resolve_links(const std::filesystem::path& path);

/// The folder of a file; `.` for a bare file name.
[[nodiscard]] std::filesystem::path folder_of(const std::filesystem::path& file);

/// Removes the temporary files of all existing writers. Async-signal-safe: for handlers of signals
/// that end the program.
void remove_unfinished_files() noexcept;

/// Checks before the work whether a file can be written at this path. Creates nothing.
/// @throws FileError with the reason if it cannot
void check_output_path(const std::filesystem::path& path);

} // namespace formats
