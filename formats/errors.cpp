// SPDX-License-Identifier: MIT
#include "formats/errors.h"

#include <system_error>
#include <utility>

#include <fmt/format.h>

namespace formats {

FormatError::FormatError(std::string chunk, std::uint64_t offset, const std::string& reason)
    : std::runtime_error(fmt::format("chunk {} at byte {}: {}", chunk, offset, reason)),
      chunk_(std::move(chunk)), offset_(offset)
{}

FormatError::FormatError(const std::string& kind)
    : std::runtime_error(kind), chunk_("FORM"), offset_(0)
{}

FormatError::FormatError(const std::filesystem::path& path, const FormatError& fault)
    : std::runtime_error(fmt::format("{}: {}", path.string(), fault.what())), chunk_(fault.chunk_),
      offset_(fault.offset_)
{}

FileError::FileError(std::filesystem::path path, const std::string& action, std::string reason)
    : std::runtime_error(fmt::format("{}: {}: {}", path.string(), action, reason)),
      path_(std::move(path)), reason_(std::move(reason))
{}

FileError::FileError(std::filesystem::path path, const std::string& action, int error_number)
    : FileError(std::move(path), action, std::generic_category().message(error_number))
{}

} // namespace formats
