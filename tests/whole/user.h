// SPDX-License-Identifier: MIT
/// A front end that stands in for a user.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "modeler/form_panel.h"
#include "modeler/front_end.h"
#include "tests/literal/scene.h"

namespace whole {

/// Does in the panel what it is told to, and writes down what it sees.
class User : public modeler::FrontEnd {
public:
    void info(std::string_view line1, std::string_view line2) override;
    void error(std::string_view line1, std::string_view line2) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view line1,
                           std::string_view line2) override;
    [[nodiscard]] std::unique_ptr<modeler::Progress>
    begin_progress(std::string_view title, std::string_view caption) override;
    [[nodiscard]] bool run_panel(modeler::FormPanel& panel) override;

    /// What to do in the panel; returns true for OK. Without one: OK at once.
    std::function<bool(modeler::FormPanel&)> in_panel;

    std::vector<std::string> informed;       ///< both lines of each box, with a line end between
    std::vector<std::string> warned;         ///< of error boxes
    std::vector<std::string> progress;       ///< title, caption, totals and steps
    std::optional<literal::Settings> before; ///< what the last panel showed at first
};

/// What the panel's controls show.
[[nodiscard]] literal::Settings shown_settings(const modeler::FormPanel& panel);

/// Gives every control the value of its setting, whether it is enabled or not. Controls that show
/// the value already are not touched.
void fill(modeler::FormPanel& panel, const literal::Settings& settings);

/// The id of the control with this label.
/// @throws std::logic_error when there is none.
[[nodiscard]] modeler::ControlId id_of(const modeler::FormPanel& panel, std::string_view label);

} // namespace whole
