// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "modeler/front_end.h"

namespace bench {

/// Shows nothing, answers yes, presses OK, and takes an error box for a failure.
class SilentFrontEnd : public modeler::FrontEnd {
public:
    void info(std::string_view /*line1*/, std::string_view /*line2*/) override {}
    void error(std::string_view line1, std::string_view /*line2*/) override
    {
        throw std::runtime_error(std::string(line1));
    }
    bool ask(std::string_view /*title*/, std::string_view /*line1*/,
             std::string_view /*line2*/) override
    {
        return true;
    }
    std::unique_ptr<modeler::Progress> begin_progress(std::string_view /*title*/,
                                                      std::string_view /*caption*/) override
    {
        return nullptr;
    }
    bool run_panel(modeler::FormPanel& /*panel*/) override { return true; }
};

} // namespace bench
