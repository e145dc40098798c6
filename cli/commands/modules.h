// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "cli/verbs.h"

namespace cli {

/// `dastrel modules`: lists the servers of the module.
class ModulesVerb : public Verb {
public:
    ModulesVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    CommandLine line_;
    std::string module_;
};

} // namespace cli
