// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace cli {

/// From now on a module that ends the program, or crashes it, ends it with status 4 (host) and a
/// line that says so; unfinished files are removed.
/// @param verb  that the line names; empty: none
void report_module_ends(std::string_view verb) noexcept;

} // namespace cli
