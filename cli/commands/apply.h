// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/verbs.h"

namespace cli {

/// `dastrel apply`: runs any command of any module on object files, without settings.
class ApplyVerb : public Verb {
public:
    ApplyVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    void check_arguments() const;
    void check_output(const std::string& module_file) const;

    CommandLine line_;
    std::vector<std::string> files_; ///< the first is the foreground, the others the background
    std::string output_;
    std::string module_;
    std::string command_; ///< empty: the only command of the module
    bool force_ = false;
    bool quiet_ = false;
};

} // namespace cli
