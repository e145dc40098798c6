// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

namespace modeler {

class FormPanel;

/// One progress display. `start` is called first and once, `finish` last and once; destruction
/// without `finish` means that the work was aborted.
class Progress {
public:
    Progress() = default;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    virtual ~Progress() = default;

    /// Shows the display at 0 of `total` steps; `total` may be 0.
    virtual void start(int total) = 0;
    /// Advances by `steps`. Returns true if the user requested cancellation.
    [[nodiscard]] virtual bool step(int steps) = 0;
    virtual void finish() = 0;
};

/// The user interface of a running command: messages, questions, progress and panels. The console,
/// the window and the tests implement it. All calls are made on the thread that runs the command.
/// Strings are raw bytes from the module; an empty second line means none.
///
/// An exception from any member is captured, the command continues as if the user had cancelled,
/// its edit is rolled back, and `Modeler::run` rethrows the exception.
class FrontEnd {
public:
    FrontEnd() = default;
    FrontEnd(const FrontEnd&) = delete;
    FrontEnd& operator=(const FrontEnd&) = delete;
    virtual ~FrontEnd() = default;

    virtual void info(std::string_view line1, std::string_view line2) = 0;
    virtual void error(std::string_view line1, std::string_view line2) = 0;
    /// Asks a yes/no question. Returns true for yes.
    [[nodiscard]] virtual bool ask(std::string_view title, std::string_view line1,
                                   std::string_view line2) = 0;

    /// Creates a progress display, or returns null if this front end shows none.
    [[nodiscard]] virtual std::unique_ptr<Progress> begin_progress(std::string_view title,
                                                                   std::string_view caption) = 0;

    /// Shows the panel and waits for the answer. Returns true for OK and false for Cancel. The
    /// panel is valid during the call only.
    [[nodiscard]] virtual bool run_panel(FormPanel& panel) = 0;
};

} // namespace modeler
