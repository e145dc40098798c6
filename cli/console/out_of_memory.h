// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace cli {

/// From now on `report_out_of_memory` names the verb and what helps where that has no memory.
/// @param verb    that the program was asked for
/// @param advice  what to do; empty: nothing helps that the one who calls it could do
/// Both texts have to last as long as the program.
void set_out_of_memory_advice(std::string_view verb, std::string_view advice) noexcept;

/// Writes on standard error that memory ended, and the advice. Needs no memory.
void report_out_of_memory() noexcept;

/// From now on errors that end the program say, too, that the object file is written and whole.
void note_output_written() noexcept;

/// What such an error ends with: empty until the object file is written. May be called from a
/// signal handler.
[[nodiscard]] std::string_view output_note() noexcept;

} // namespace cli
