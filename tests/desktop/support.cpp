// SPDX-License-Identifier: MIT
#include "tests/desktop/support.h"

#include <chrono>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "desktop/application.h"
#include "desktop/panel/control_slot.h"
#include "desktop/panel/form_view.h"
#include "desktop/panel/panel_dialog.h"
#include "desktop/window/main_window.h"
#include "formats/lwo2_reader.h"
#include "formats/merge.h"

namespace support {

std::filesystem::path example(const std::string& name)
{
    return std::filesystem::path(DASTREL_SOURCE_DIR) / "examples" / name;
}

int run_tests(QObject& tests, int count, char** arguments)
{
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    const desktop::Application application(count, arguments);
    QApplication::setOrganizationName("dastrel");
    QApplication::setApplicationName("modeler");
    return QTest::qExec(&tests, count, arguments);
}

void PanelUser::info(std::string_view line1, std::string_view line2)
{
    informed.push_back(std::string(line1) + "\n" + std::string(line2));
}

void PanelUser::error(std::string_view line1, std::string_view line2) { info(line1, line2); }

bool PanelUser::ask(std::string_view, std::string_view, std::string_view) { return false; }

std::unique_ptr<modeler::Progress> PanelUser::begin_progress(std::string_view, std::string_view)
{
    return nullptr;
}

bool PanelUser::run_panel(modeler::FormPanel& panel)
{
    desktop::PanelDialog dialog(panel, nullptr);
    dialog.resize(dialog.sizeHint()); // nothing needs scrolling
    dialog.show();
    dialog.activateWindow();
    if (!QTest::qWaitForWindowActive(&dialog))
        throw std::runtime_error("the panel's window does not become active");
    in_panel(dialog, panel);
    return dialog.result() == QDialog::Accepted;
}

modeler::Modeler example_session()
{
    mesh::Document document = formats::read_lwo2_file(example("terrain.lwo"), {});
    formats::append_document(document, formats::read_lwo2_file(example("tree.lwo"), {}), "tree",
                             {});
    return modeler::Modeler(std::move(document),
                            {modeler::LayerRole::foreground, modeler::LayerRole::background});
}

const modeler::Control& control(const modeler::FormPanel& panel, const std::string& label)
{
    const modeler::Control* const found = panel.find(label);
    if (found == nullptr)
        throw std::logic_error("the panel has no control '" + label + "'");
    return *found;
}

QWidget* editor(desktop::PanelDialog& dialog, const modeler::FormPanel& panel,
                const std::string& label)
{
    return dialog.form().slot_of(control(panel, label).id)->editor().widget();
}

void type(QWidget* field, const QString& text)
{
    QTest::keySequence(field, QKeySequence::SelectAll);
    if (text.isEmpty())
        QTest::keyClick(field, Qt::Key_Delete);
    else
        QTest::keyClicks(field, text);
}

void run_command(desktop::MainWindow& window, std::vector<Step> steps)
{
    constexpr qint64 most_ms = 120000;
    std::size_t next = 0;
    QElapsedTimer waited;
    waited.start();
    bool opened = false;
    bool busy = false; // a step lets events happen
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        desktop::PanelDialog* const dialog = window.front_end().dialog();
        if (dialog == nullptr || !dialog->isVisible() || busy)
            return;
        busy = opened = true;
        if (next < steps.size() && (!steps[next].when || steps[next].when())) {
            steps[next].then(*dialog);
            ++next;
            waited.restart();
        } else if (next == steps.size() || waited.elapsed() > most_ms) {
            QTest::qFail(next == steps.size() ? "the panel was left open"
                                              : "a step's time did not come",
                         __FILE__, __LINE__);
            next = steps.size();
            dialog->reject();
        }
        busy = false;
    });
    watch.start(std::chrono::milliseconds(1));
    window.commands().at(0)->trigger();
    if (!wait_until([&] { return opened && window.front_end().dialog() == nullptr; }))
        throw std::runtime_error("no panel was opened");
}

void run_command(desktop::MainWindow& window,
                 const std::function<void(desktop::PanelDialog&)>& step)
{
    run_command(window, std::vector<Step>{{{}, step}});
}

bool wait_until(const std::function<bool()>& done) { return QTest::qWaitFor(done, 30000); }

void answer_box(int button, QString& message)
{
    auto* const watch = new QTimer(qApp);
    QObject::connect(watch, &QTimer::timeout, watch, [watch, button, &message] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr)
            return;
        watch->deleteLater();
        watch->stop();
        message = box->text() + "\n" + box->informativeText();
        box->button(static_cast<QMessageBox::StandardButton>(button))->click();
    });
    watch->start(std::chrono::milliseconds(1));
}

int run_program(const QStringList& arguments)
{
    // Not QProcess, whose way to make a process ThreadSanitizer 14 cannot follow.
    std::vector<std::string> texts{DASTREL_PROGRAM};
    for (const QString& argument : arguments)
        texts.push_back(argument.toStdString());
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    pid_t child = 0;
    int status = 0;
    if (::posix_spawn(&child, DASTREL_PROGRAM, nullptr, nullptr, pointers.data(), environ) != 0 ||
        ::waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

std::string bytes_of(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace support
