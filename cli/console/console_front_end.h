// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "cli/console/output.h"
#include "modeler/front_end.h"
#include "settings/form_filling.h"

namespace cli {

/// Non-interactive front end: fills in the panel with the given settings and presses OK, prints
/// messages and a progress line to the console, and answers questions with no.
class ConsoleFrontEnd : public modeler::FrontEnd {
public:
    /// Both arguments must outlive the front end.
    ConsoleFrontEnd(Console& console, std::span<const settings::GivenSetting> settings)
        : console_(console), settings_(settings)
    {}

    void info(std::string_view line1, std::string_view line2) override;
    void error(std::string_view line1, std::string_view line2) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view line1,
                           std::string_view line2) override;
    [[nodiscard]] std::unique_ptr<modeler::Progress>
    begin_progress(std::string_view title, std::string_view caption) override;
    [[nodiscard]] bool run_panel(modeler::FormPanel& panel) override;

    /// The values of the panel's controls when OK was pressed. Empty before that.
    [[nodiscard]] const std::vector<settings::UsedSetting>& used_settings() const noexcept
    {
        return used_;
    }

private:
    Console& console_;
    std::span<const settings::GivenSetting> settings_;
    std::vector<settings::UsedSetting> used_;
};

} // namespace cli
