// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace formats {

/// What was read is not a whole and sound file of its format.
class FormatError : public std::runtime_error {
public:
    /// @param chunk   the chunk's four characters, printable
    /// @param offset  byte of the file at which the fault lies
    /// @param reason  what is wrong, and what it means
    FormatError(std::string chunk, std::uint64_t offset, const std::string& reason);

    /// A file that is of another format as a whole.
    /// @param kind  what it is, such as "is a PNG picture; ...", which is the whole message
    explicit FormatError(const std::string& kind);

    /// The same fault with the file named before it.
    FormatError(const std::filesystem::path& path, const FormatError& fault);

    [[nodiscard]] const std::string& chunk() const noexcept { return chunk_; }
    [[nodiscard]] std::uint64_t offset() const noexcept { return offset_; }

private:
    std::string chunk_;
    std::uint64_t offset_;
};

/// A mesh does not fit into the format it is to be written in. The message names the layer, the
/// limit, and what to do.
class LimitError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The system refused a file.
class FileError : public std::runtime_error {
public:
    /// @param action  what failed, as in "cannot be opened"
    /// @param reason  why, in the system's words or ours
    FileError(std::filesystem::path path, const std::string& action, std::string reason);

    /// The same with the system's text for an error number.
    FileError(std::filesystem::path path, const std::string& action, int error_number);

    [[nodiscard]] const std::filesystem::path& path() const noexcept { return path_; }
    [[nodiscard]] const std::string& reason() const noexcept { return reason_; }

private:
    std::filesystem::path path_;
    std::string reason_;
};

} // namespace formats
