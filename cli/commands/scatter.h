// SPDX-License-Identifier: MIT
#pragma once

#include "cli/commands/scatter_request.h"
#include "cli/verbs.h"

namespace cli {

/// `dastrel scatter`: reads ground and model, runs the module's command on them, writes the result.
class ScatterVerb : public Verb {
public:
    [[nodiscard]] CommandLine& command_line() noexcept override
    {
        return arguments_.command_line();
    }
    ExitStatus run(Console& console) override;

private:
    ScatterArguments arguments_;
};

} // namespace cli
