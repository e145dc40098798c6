// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace cli {

/// Writes on standard error that memory ended and what helps, `verb` being what the program was
/// asked for, or empty. Needs no memory.
void report_out_of_memory(std::string_view verb) noexcept;

/// From now on `report_out_of_memory` says, too, that the object file is written and whole.
void note_output_written() noexcept;

} // namespace cli
