// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace formats {

/// A file that appears whole or not at all.
///
/// The bytes go to a new file beside the target, which is flushed to the disk and renamed over the
/// target by `commit`. Until then, and after any failure, the target is as it was. A target that is
/// a symbolic link stays one: what it points to is replaced. An existing target keeps its
/// permissions, and its owner and group where the system allows it; a new one gets the permissions
/// that the user's mask leaves. What runs that were killed left behind for the same target is
/// removed. A pipe, a device or /dev/stdout is written directly.
class FileWriter {
public:
    /// Opens the file for writing. @throws FileError
    explicit FileWriter(const std::filesystem::path& path);
    FileWriter(const FileWriter&) = delete;
    FileWriter& operator=(const FileWriter&) = delete;
    /// Removes the unfinished file unless it was committed.
    ~FileWriter();

    /// Appends bytes. Not buffered: hand over large runs. @throws FileError
    void write(std::span<const std::byte> bytes);

    /// Flushes, and puts the file in its place. Once, as the last call. @throws FileError
    void commit();

private:
    void open_beside();

    std::filesystem::path path_;      ///< as given; for messages
    std::filesystem::path target_;    ///< links followed
    std::filesystem::path temporary_; ///< empty when the target is written directly
    int descriptor_ = -1;
    int slot_ = -1; ///< place among the unfinished files
};

/// Where the bytes written to a path go: the path, or what its symbolic links lead to, which need
/// not exist. @throws FileError where they lead nowhere
[[nodiscard]] std::filesystem::path resolve_links(const std::filesystem::path& path);

/// The folder of a file, `.` for a name alone.
[[nodiscard]] std::filesystem::path folder_of(const std::filesystem::path& file);

/// Removes the unfinished files of all writers there are now. For a handler of a signal that ends
/// the program: calls only what is safe there.
void remove_unfinished_files() noexcept;

/// Judges, before any work is done, whether a file can be written at this path. Creates nothing.
/// @throws FileError saying what stands in the way.
void check_output_path(const std::filesystem::path& path);

} // namespace formats
