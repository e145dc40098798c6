// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/console/output.h"
#include "mesh/document.h"

namespace cli {

/// The file name that denotes standard input or standard output.
inline constexpr const char* standard_stream = "-";

/// Checks before the work that an input exists, can be opened, and has a supported format.
/// @throws Failure (input)
void validate_input(const std::string& name);

/// Checks before the work that an output can be written. @throws Failure (output)
void validate_output(const std::string& name);

/// Reads an object file or standard input. Warnings of the reader go to the console.
/// @throws Failure (input)
[[nodiscard]] mesh::Document read_document(const std::string& name, Console& console);

/// Appends the layers of `model`, read from the file `name`, to a document. Warnings of the merge
/// go to the console. @throws Failure (input) if both together exceed a limit of the format
void append_model(mesh::Document& document, mesh::Document model, const std::string& name,
                  Console& console);

/// Writes an object file atomically, or to standard output. @throws Failure (output)
void write_document(const mesh::Document& document, const std::string& name, Console& console);

/// The file name without folders, for messages.
[[nodiscard]] std::string short_name(const std::string& name);

/// `short_name` without its extension.
[[nodiscard]] std::string stem(const std::string& name);

} // namespace cli
