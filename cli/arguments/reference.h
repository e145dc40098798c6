// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "cli/arguments/command_line.h"

namespace cli {

/// A verb as the pages below tell of it.
struct VerbHelp {
    std::string_view name;
    std::string_view summary;
    const CommandLine* line; ///< not null
};

/// The manual page of the program, for man: every verb with its options.
[[nodiscard]] std::string man_page(std::span<const VerbHelp> verbs);

/// What bash, zsh or fish needs to complete verbs, options and file names.
[[nodiscard]] std::string bash_completion(std::span<const VerbHelp> verbs);
[[nodiscard]] std::string zsh_completion(std::span<const VerbHelp> verbs);
[[nodiscard]] std::string fish_completion(std::span<const VerbHelp> verbs);

} // namespace cli
