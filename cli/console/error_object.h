// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string_view>

#include "cli/errors.h"

namespace cli {

/// Enables error reports as JSON objects on standard output, in addition to messages on standard
/// error. For calls with JSON output.
void enable_json_errors() noexcept;

/// Writes the error object if JSON errors are enabled and neither a result nor an error object was
/// written before. Allocates no memory; async-signal-safe.
/// @param message  pieces of the message, to be concatenated
/// @param file     file concerned; empty: none
/// @param place    position in the file, or option or step; empty: none
void write_error_object(ExitStatus status, std::initializer_list<std::string_view> message,
                        std::string_view file, std::string_view place) noexcept;

} // namespace cli
