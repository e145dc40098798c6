// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace formats {

/// The file is invalid: damaged, truncated, or of another format.
class FormatError : public std::runtime_error {
public:
    /// @param chunk   the chunk id, printable
    /// @param offset  byte offset of the fault in the file
    /// @param reason  what is wrong, and what it means
    FormatError(std::string chunk, std::uint64_t offset, const std::string& reason);

    /// A file of another format.
    /// @param kind  the complete message, such as "is a PNG picture; ..."
    explicit FormatError(const std::string& kind);

    /// A copy of `fault` with the path prepended to the message.
    FormatError(const std::filesystem::path& path, const FormatError& fault);

    [[nodiscard]] const std::string& chunk() const noexcept { return chunk_; }
    [[nodiscard]] std::uint64_t offset() const noexcept { return offset_; }

private:
    std::string chunk_;
    std::uint64_t offset_;
};

/// A mesh exceeds a limit of the file format. The message names the layer, the limit, and what to
/// do.
class LimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file operation failed.
class FileError : public std::runtime_error {
public:
    /// @param action  what failed, such as "cannot be opened"
    /// @param reason  the cause
    FileError(std::filesystem::path path, const std::string& action, std::string reason);

    /// @param error_number  errno; the reason is its system message
    FileError(std::filesystem::path path, const std::string& action, int error_number);

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    std::filesystem::path path_;
    std::string reason_;
};

} // namespace formats
