// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <functional>
#include <string_view>

#include <QApplication>
#include <QTimer>

namespace desktop {

/// Writes a line to standard error, which may be a terminal. Takes no memory.
void write_problem(std::string_view what);

/// The application object of the window. It ends what would otherwise end the program or be taken
/// for something else than it is:
/// - an exception that comes out of a slot or of an event handler ends there, and is told;
/// - a label that has not been told how to read its text shows it as it is, never as HTML: most
///   texts have names from files in them (those of tooltips go through `tool_tip`);
/// - grey text can be read, whatever the theme;
/// - a write past a size limit, or into a pipe that nobody reads, fails with an error instead of a
///   signal.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& count, char** arguments);

    /// What is called with the message of an exception that was caught, on the window's thread, as
    /// soon as the event loop goes on. Of several before that, the first is told.
    void set_failure_handler(std::function<void(std::string_view)> handler);

    bool notify(QObject* receiver, QEvent* event) override;

protected:
    bool event(QEvent* event) override;

private:
    void note(const char* what) noexcept;
    void tell();

    std::function<void(std::string_view)> handler_;
    QTimer tell_;
    std::array<char, 512> what_{}; ///< beforehand: there may be no memory for it; empty: none
};

} // namespace desktop
