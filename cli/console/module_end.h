// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace cli {

/// Installs a handler (see modeler::on_module_end): if a module ends or crashes the program,
/// temporary files are removed, and the program exits with status 4 (host) and a message.
/// @param verb  verb for the message; empty: none; must stay valid
void report_module_ends(std::string_view verb) noexcept;

} // namespace cli
