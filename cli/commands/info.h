// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/verbs.h"

namespace cli {

/// `dastrel info`: prints a summary of object files.
class InfoVerb : public Verb {
public:
    InfoVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    CommandLine line_;
    std::vector<std::string> files_;
    bool json_ = false;
};

} // namespace cli
