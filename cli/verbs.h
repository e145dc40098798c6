// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/arguments/command_line.h"
#include "cli/console/output.h"
#include "cli/errors.h"

namespace cli {

/// A subcommand of the program, such as `scatter`.
class Verb {
public:
    Verb() = default;
    Verb(const Verb&) = delete;
    Verb& operator=(const Verb&) = delete;
    virtual ~Verb() = default;

    /// The command line of the verb; parsing it sets members of the verb.
    [[nodiscard]] virtual CommandLine& command_line() noexcept = 0;

    /// Runs the verb after its arguments were parsed. @throws Failure
    virtual ExitStatus run(Console& console) = 0;
};

} // namespace cli
