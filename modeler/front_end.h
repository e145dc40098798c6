// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

namespace modeler {

class FormPanel;

/// One progress display. `start` comes first and once, `finish` last and once; a display that is
/// destroyed without `finish` was given up half-way.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    virtual ~Progress() = default;

    /// Shows the display at 0 of `total` steps; 0: there is nothing to do.
    virtual void start(int total) = 0;
    /// Advances by `steps`. Returns true when the user has asked to stop.
    [[nodiscard]] virtual bool step(int steps) = 0;
    virtual void finish() = 0;
};

/// Everything that a running command shows or asks goes through this. A console, a window and a
/// test each have their own; a command cannot tell them apart. All calls come on the thread that
/// runs the command. Texts are the module's bytes; an empty second line means that there is none.
///
/// An exception from any of these is held back while the command ends as if the user had cancelled,
/// drops its edit, and is thrown on by `Modeler::run`.
class FrontEnd {
public:
    FrontEnd() = default;
    FrontEnd(const FrontEnd&) = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;
    virtual ~FrontEnd() = default;

    virtual void info(std::string_view line1, std::string_view line2) = 0;
    virtual void error(std::string_view line1, std::string_view line2) = 0;
    /// Returns true for yes.
    [[nodiscard]] virtual bool ask(std::string_view title, std::string_view line1,
                                   std::string_view line2) = 0;

    /// Makes a progress display, or null when this front end shows none.
    [[nodiscard]] virtual std::unique_ptr<Progress> begin_progress(std::string_view title,
                                                                   std::string_view caption) = 0;

    /// Lets the user fill the panel. Returns true for OK and false for Cancel. The panel is valid
    /// during the call only.
    [[nodiscard]] virtual bool run_panel(FormPanel& panel) = 0;
};

} // namespace modeler
