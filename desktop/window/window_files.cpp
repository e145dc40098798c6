// SPDX-License-Identifier: MIT
// Opening and saving.
#include <exception>
#include <fstream>

#include <fmt/format.h>

#include <QCloseEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

#include "desktop/message_box.h"
#include "desktop/text.h"
#include "desktop/window/file_dialogs.h"
#include "desktop/window/main_window.h"
#include "desktop/window/scene_roles.h"

namespace desktop {

namespace {

const char* const object_files = "LWO2 objects (*.lwo *.LWO);;All files (*)";

MainWindow::Paths local_files(const QMimeData& data)
{
    MainWindow::Paths files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files.push_back(to_path(url.toLocalFile()));
    return files;
}

} // namespace

bool MainWindow::open(const Paths& files) { return read_files(files, true); }

bool MainWindow::add(const Paths& files) { return read_files(files, workspace_.empty()); }

/// With `anew`, the first readable file replaces the scene.
bool MainWindow::read_files(const Paths& files, bool anew)
{
    const bool first = anew;
    std::vector<std::string> warnings;
    std::string problems;
    for (const std::filesystem::path& path : files) {
        try {
            Workspace::ReadFile file;
            run_in_background([&] { file = Workspace::read(path); });
            tracer_.forget_document();
            if (anew) {
                const auto roles = remembered_roles(file.path, file.document);
                workspace_.begin(std::move(file), warnings);
                for (std::size_t i = 0; roles && i < roles->size(); ++i)
                    workspace_.session().set_role(i, (*roles)[i]);
            } else {
                workspace_.add(std::move(file), warnings);
            }
            anew = false;
            remember(path);
        } catch (const std::bad_alloc&) {
            problems +=
                fmt::format("{}: is too large for the memory of this machine\n", path.string());
        } catch (const std::exception& error) {
            const std::string what = error.what();
            const bool named = what.find(path.filename().string()) != std::string::npos;
            problems += (named ? what : fmt::format("{}: {}", path.string(), what)) + "\n";
        }
    }
    fit_next_ = first && !anew;
    show_document();
    show_message(
        warnings.empty() ? QString()
        : warnings.size() > 1
            ? tr("%1 (and %2 more)").arg(printable(warnings.front())).arg(warnings.size() - 1)
            : printable(warnings.front()));
    if (problems.empty())
        return true;
    problems.pop_back();
    report(problems);
    return false;
}

void MainWindow::ask_and_open(bool adding)
{
    if (!adding && !confirm_discard())
        return;
    const QStringList chosen =
        QFileDialog::getOpenFileNames(this, adding ? tr("Add Files") : tr("Open Files"),
                                      to_qt(last_folder("objects")), tr(object_files));
    if (chosen.isEmpty())
        return;
    remember_folder("objects", chosen.front());
    Paths files;
    for (const QString& file : chosen)
        files.push_back(to_path(file));
    run_when_idle([this, files, adding] { (void)(adding ? add(files) : open(files)); });
}

/// Asks before overwriting a file from which the scene was read, unless it is the file for "Save".
bool MainWindow::may_replace(const std::filesystem::path& file, bool foreground_only)
{
    const std::filesystem::path open = workspace_.open_file_at(file);
    if (open.empty() || (open == workspace_.path() && !foreground_only))
        return true;
    MessageBox box(
        QMessageBox::Warning, tr("Replace a File of the Scene"),
        tr("%1 is a file of this scene, opened as %2.").arg(printable(file), printable(open)),
        foreground_only ? tr("Replace it with the foreground layers?")
                        : tr("Replace it with all layers of the scene?"),
        QMessageBox::Yes | QMessageBox::Cancel, this);
    box.setDefaultButton(QMessageBox::Cancel);
    return box.exec() == QMessageBox::Yes;
}

bool MainWindow::save_to(const std::filesystem::path& file, bool foreground_only)
{
    if (!may_replace(file, foreground_only))
        return false;
    try {
        run_in_background([&] { workspace_.write(file, foreground_only); });
    } catch (const std::bad_alloc&) {
        report(fmt::format("{}: cannot be written: there is too little memory", file.string()));
        return false;
    } catch (const std::exception& error) {
        const std::string what = error.what();
        const bool named = what.find(file.filename().string()) != std::string::npos;
        report(named ? what : fmt::format("{}: {}", file.string(), what));
        return false;
    }
    if (!foreground_only) {
        workspace_.saved_as(file);
        forget_kept();
        remember_roles(file, workspace_.session().document(), workspace_.session().roles());
    }
    remember(file);
    update_state();
    show_message(tr("Wrote %1.").arg(printable(file)));
    return true;
}

bool MainWindow::save()
{
    return workspace_.path().empty() ? ask_and_save(false) : save_to(workspace_.path(), false);
}

bool MainWindow::ask_and_save(bool foreground_only)
{
    const std::filesystem::path folder = last_folder("objects");
    const std::filesystem::path proposed =
        foreground_only || workspace_.path().empty()
            ? workspace_.suggested_file(folder, foreground_only ? "-with-clones" : "-scene", ".lwo")
            : workspace_.path();
    const QString chosen = QFileDialog::getSaveFileName(
        this, foreground_only ? tr("Save Foreground Layers") : tr("Save Scene"), to_qt(proposed),
        tr(object_files));
    if (chosen.isEmpty())
        return false;
    remember_folder("objects", chosen);
    return save_to(with_ending(chosen, ".lwo"), foreground_only);
}

void MainWindow::close_scene()
{
    if (!confirm_discard())
        return;
    run_when_idle([this] {
        tracer_.forget_document();
        workspace_.clear();
        show_document();
        show_message({});
    });
}

bool MainWindow::confirm_discard()
{
    if (panel_open_ || running_ || background_running_)
        return false;
    if (!workspace_.modified())
        return true;
    MessageBox box(QMessageBox::Question, tr("Unsaved Changes"),
                   tr("Save the changes to %1?").arg(printable(workspace_.title())), {},
                   QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    if (answer == QMessageBox::Save)
        return save();
    if (answer == QMessageBox::Discard)
        forget_kept();
    return answer == QMessageBox::Discard;
}

/// Adds the file to the list of recent files. Failures are ignored.
void MainWindow::remember(const std::filesystem::path& file) noexcept
{
    constexpr qsizetype most = 10;
    try {
        QSettings settings;
        QStringList recent = settings.value("recent").toStringList();
        const QString name = to_qt(std::filesystem::absolute(file));
        recent.removeAll(name);
        recent.prepend(name);
        settings.setValue("recent", recent.mid(0, most));
    } catch (const std::exception&) {
        return;
    }
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (panel_open_ && front_end_.dialog() != nullptr)
        front_end_.dialog()->raise();
    if (!confirm_discard()) {
        event->ignore();
        return;
    }
    QSettings settings;
    settings.setValue("geometry", saveGeometry());
    settings.setValue("state", saveState());
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (panel_open_ || running_ || local_files(*event->mimeData()).empty())
        return;
    event->acceptProposedAction();
    statusBar()->showMessage(
        workspace_.empty() ? tr("Drop to open: the first file is the ground, others the model")
                           : tr("Drop to add as background layers"),
        3000);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const Paths files = local_files(*event->mimeData());
    event->acceptProposedAction();
    run_when_idle([this, files] { add(files); });
}

} // namespace desktop
