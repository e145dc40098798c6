// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/verbs.h"

namespace cli {

/// `dastrel dump`: prints a whole mesh as text.
class DumpVerb : public Verb {
public:
    DumpVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    CommandLine line_;
    std::vector<std::string> files_;
};

} // namespace cli
