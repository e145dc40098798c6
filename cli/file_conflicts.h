// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace cli {

/// A file that a run reads or writes.
struct RunFile {
    std::string source; ///< its name in messages, such as `the input` or `-o`
    std::string name;   ///< path, or `-` for the standard stream
};

/// Whether an output may replace an input.
enum class Replacing { refused, allowed };

/// Checks that no output is the same file as an input (unless `replacing` allows it) or as another
/// output. Compares files, not names (see formats::FileIdentity). Devices such as /dev/null may be
/// given several times; a pipe may be both input and output. @throws UsageError
void check_file_conflicts(std::span<const RunFile> inputs, std::span<const RunFile> outputs,
                          Replacing replacing);

} // namespace cli
