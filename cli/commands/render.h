// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "cli/pictures/picture_request.h"
#include "cli/verbs.h"

namespace cli {

/// `dastrel render`: renders object files to a picture.
class RenderVerb : public Verb {
public:
    RenderVerb();

    [[nodiscard]] CommandLine& command_line() noexcept override { return line_; }
    ExitStatus run(Console& console) override;

private:
    void check_output() const;

    CommandLine line_;
    PictureArguments picture_;
    std::vector<std::string> files_;
    std::string output_;
    bool force_ = false;
    bool quiet_ = false;
};

} // namespace cli
