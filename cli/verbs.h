// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/arguments/command_line.h"
#include "cli/console/output.h"
#include "cli/errors.h"

namespace cli {

/// One verb of the program: its arguments and what it does with them.
class Verb {
public:
    Verb() = default;
    Verb(const Verb&) = delete;
    Verb& operator=(const Verb&) = delete;
    virtual ~Verb() = default;

    /// The arguments it takes; parsing them fills the verb.
    [[nodiscard]] virtual CommandLine& command_line() noexcept = 0;

    /// Does it, after the arguments were parsed. @throws Failure
    virtual ExitStatus run(Console& console) = 0;
};

} // namespace cli
