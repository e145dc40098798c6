// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/console/output.h"
#include "mesh/document.h"

namespace cli {

/// The name that stands for standard input or standard output.
inline constexpr const char* standard_stream = "-";

/// Judges, before anything is read, whether an input can be: that it is there, can be opened, and
/// is of a format that is read. @throws Failure (input)
void validate_input(const std::string& name);

/// Judges whether the output can be written. @throws Failure (output)
void validate_output(const std::string& name);

/// Reads an object file, or standard input. Doubts about it become warnings.
/// @throws Failure (input)
[[nodiscard]] mesh::Document read_document(const std::string& name, Console& console);

/// Writes an object file whole or not at all, or to standard output. @throws Failure (output)
void write_document(const mesh::Document& document, const std::string& name, Console& console);

/// The file's name without folders, as messages show it.
[[nodiscard]] std::string short_name(const std::string& name);

/// `short_name` without its ending.
[[nodiscard]] std::string stem(const std::string& name);

} // namespace cli
