// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <functional>
#include <string_view>

#include <QApplication>
#include <QTimer>

namespace desktop {

/// Writes a line to standard error, escaped for a terminal. Allocates no memory.
void write_problem(std::string_view what);

/// The application object. In addition to QApplication:
/// - it catches exceptions of slots and event handlers and passes them to the failure handler;
/// - labels with the default text format show plain text, never HTML, since most texts contain
/// names
///   from files (for tool tips use `tool_tip`);
/// - disabled text is readable in every theme;
/// - SIGPIPE and SIGXFSZ are ignored, so that such writes fail with an error.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& count, char** arguments);

    /// Sets the handler for caught exceptions. It is called with the message on the main thread
    /// from the event loop; if several exceptions occur before that, only for the first.
    void set_failure_handler(std::function<void(std::string_view)> handler);

    bool notify(QObject* receiver, QEvent* event) override;

protected:
    bool event(QEvent* event) override;

private:
    void record(const char* what) noexcept;
    void report();

    std::function<void(std::string_view)> handler_;
    QTimer report_timer_;
    std::array<char, 512> what_{}; ///< message; preallocated, since memory may have run out
};

} // namespace desktop
