// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace cli {

/// Sets the texts for `report_out_of_memory`, which must stay valid until the program ends.
/// @param verb    the verb that is running
/// @param advice  what the user can do; empty: nothing
void set_out_of_memory_advice(std::string_view verb, std::string_view advice) noexcept;

/// Writes the out-of-memory message and the advice to standard error. Allocates no memory.
void report_out_of_memory() noexcept;

/// Records that the object file is complete; later error messages mention it (see `output_note`).
void note_output_written() noexcept;

/// Text to append to error messages: empty until the object file is complete. Async-signal-safe.
[[nodiscard]] std::string_view output_note() noexcept;

} // namespace cli
