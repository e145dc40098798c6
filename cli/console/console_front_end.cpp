// SPDX-License-Identifier: MIT
#include "cli/console/console_front_end.h"

#include <string>
#include <utility>

#include <fmt/format.h>

#include "cli/errors.h"
#include "modeler/form_panel.h"
#include "settings/errors.h"

namespace cli {

namespace {

class ProgressLine : public modeler::Progress {
public:
    ProgressLine(Console& console, std::string_view caption) : console_(console), caption_(caption)
    {}
    ~ProgressLine() override { console_.clear_progress(); }

    void start(int total) override { total_ = total; }

    [[nodiscard]] bool step(int steps) override
    {
        done_ += steps;
        if (total_ > 0 && console_.shows_progress())
            console_.show_progress(caption_, static_cast<double>(done_) / total_);
        return false;
    }

    void finish() override { console_.clear_progress(); }

private:
    Console& console_;
    std::string caption_;
    int total_ = 0;
    long long done_ = 0;
};

} // namespace

void ConsoleFrontEnd::info(std::string_view line1, std::string_view line2)
{
    console_.note(line1);
    if (!line2.empty())
        console_.note(line2);
}

void ConsoleFrontEnd::error(std::string_view line1, std::string_view line2)
{
    console_.error(line1);
    if (!line2.empty())
        console_.error(line2);
}

bool ConsoleFrontEnd::ask(std::string_view title, std::string_view line1, std::string_view line2)
{
    console_.note(fmt::format("{}: {} {}", title, line1, line2));
    console_.note("answered with no");
    return false;
}

std::unique_ptr<modeler::Progress> ConsoleFrontEnd::begin_progress(std::string_view /*title*/,
                                                                   std::string_view caption)
{
    if (!console_.shows_progress())
        return nullptr;
    return std::make_unique<ProgressLine>(console_, caption);
}

bool ConsoleFrontEnd::run_panel(modeler::FormPanel& panel)
{
    try {
        settings::check_form(panel);
        for (const std::string& warning : settings::fill_form(panel, settings_))
            console_.warning(warning);
    } catch (const settings::WrongSettings& error) {
        throw UsageError(error.what());
    } catch (const settings::PanelMismatch& error) {
        throw Failure(ExitStatus::host, error.what());
    }
    used_ = settings::read_form(panel);
    return true;
}

} // namespace cli
