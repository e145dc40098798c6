// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>
#include <string_view>

#include "cli/errors.h"

namespace cli {

/// From now on errors are told on standard output, too, as JSON objects: the program was asked for
/// JSON, and whoever reads it shall not have to read sentences to know what went wrong.
void enable_json_errors() noexcept;

/// Writes the object where that was asked for and neither a result nor an object was written
/// before. Needs no memory, and may be called from a signal handler.
/// @param message  in pieces
/// @param file     that the error is about; empty: none
/// @param place    in the file, or the option or step that it is about; empty: none
void write_error_object(ExitStatus status, std::initializer_list<std::string_view> message,
                        std::string_view file, std::string_view place) noexcept;

} // namespace cli
