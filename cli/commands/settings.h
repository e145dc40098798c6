// SPDX-License-Identifier: MIT
#pragma once

#include "cli/verbs.h"

namespace cli {

/// `dastrel settings`: prints the table of all settings.
class SettingsVerb : public Verb {
public:
    SettingsVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    CommandLine line_;
    bool json_ = false;
    bool markdown_ = false;
};

} // namespace cli
