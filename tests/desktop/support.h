// SPDX-License-Identifier: MIT
/// What the tests of the window share.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <QString>
#include <QTemporaryDir>

#include "modeler/form_panel.h"
#include "modeler/front_end.h"
#include "modeler/modeler.h"

class QWidget;

namespace desktop {
class MainWindow;
class PanelDialog;
} // namespace desktop

namespace support {

/// An example object that comes with the project.
[[nodiscard]] std::filesystem::path example(const std::string& name);

/// Runs the tests of an object, with settings and presets in a folder that goes away.
int run_tests(QObject& tests, int count, char** arguments);

/// Shows each panel in its window, and does there what the test says. What is then on the screen
/// decides between OK and Cancel.
class PanelUser : public modeler::FrontEnd {
public:
    using InPanel = std::function<void(desktop::PanelDialog&, modeler::FormPanel&)>;

    void info(std::string_view line1, std::string_view line2) override;
    void error(std::string_view line1, std::string_view line2) override;
    [[nodiscard]] bool ask(std::string_view title, std::string_view line1,
                           std::string_view line2) override;
    [[nodiscard]] std::unique_ptr<modeler::Progress>
    begin_progress(std::string_view title, std::string_view caption) override;
    [[nodiscard]] bool run_panel(modeler::FormPanel& panel) override;

    InPanel in_panel;
    std::vector<std::string> informed; ///< both lines of each box, with a line end between
};

/// A session with the example terrain (foreground) and tree (background).
[[nodiscard]] modeler::Modeler example_session();

/// The control with this label. @throws std::logic_error when there is none
[[nodiscard]] const modeler::Control& control(const modeler::FormPanel& panel,
                                              const std::string& label);

/// The widget in which the control with this label is edited.
[[nodiscard]] QWidget* editor(desktop::PanelDialog& dialog, const modeler::FormPanel& panel,
                              const std::string& label);

/// Types into a field in place of what stands there.
void type(QWidget* field, const QString& text);

/// Something to do in an open panel as soon as a condition holds. It must not wait itself: the
/// window begins previews only when everything that was done to the panel has come to its end.
struct Step {
    std::function<bool()> when; ///< none: at once
    std::function<void(desktop::PanelDialog&)> then;
};

/// Runs the window's first command; the steps are done while its panel is open, and have to close
/// it. A step whose time does not come within two minutes, and a panel that is left open, fail
/// the test.
void run_command(desktop::MainWindow& window, std::vector<Step> steps);
void run_command(desktop::MainWindow& window,
                 const std::function<void(desktop::PanelDialog&)>& step);

/// Lets events happen until `done` holds. Returns false when it takes longer than half a minute.
[[nodiscard]] bool wait_until(const std::function<bool()>& done);

/// Answers the box that opens next with one of its buttons, and gives its texts to `told`.
void answer_box(int button, QString& message);

/// Runs the program `dastrel`, and gives its exit status.
[[nodiscard]] int run_program(const QStringList& arguments);

[[nodiscard]] std::string bytes_of(const std::filesystem::path& file);

} // namespace support
