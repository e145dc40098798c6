// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace cli {

/// A file that a run reads or writes. `source` names it in messages: `the input`, `-o`.
struct RunFile {
    std::string source;
    std::string name; ///< path, or `-` for the standard stream
};

/// Whether an output may replace an input.
enum class Replacing { refused, allowed };

/// Refuses a run with an output that is one of its inputs, or the same file as another output,
/// however the names are spelled and through links of both kinds. Two outputs in one file are
/// refused always. Devices such as /dev/null may be named several times; so may a pipe that is both
/// an input and an output. @throws UsageError
void check_file_conflicts(std::span<const RunFile> inputs, std::span<const RunFile> outputs,
                          Replacing replacing);

} // namespace cli
