// SPDX-License-Identifier: MIT
// Opening, saving, pictures.
#include <exception>
#include <fstream>

#include <fmt/format.h>

#include <QCloseEvent>
#include <QFileDialog>
#include <QMessageBox>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QUrl>

#include "desktop/text.h"
#include "desktop/window/main_window.h"
#include "formats/file_writer.h"
#include "picture/image/png.h"
#include "picture/maps/legend.h"
#include "picture/render/progressive.h"

namespace desktop {

namespace {

const char* const object_files = "LWO2 objects (*.lwo *.LWO);;All files (*)";
const char* const picture_files = "PNG pictures (*.png)";

QString last_folder(const char* purpose)
{
    return QSettings().value(QString("folder/") + purpose).toString();
}

void remember_folder(const char* purpose, const QString& file)
{
    QSettings().setValue(QString("folder/") + purpose, QFileInfo(file).absolutePath());
}

/// With an ending, where the person gave none.
QString with_ending(const QString& file, const char* ending)
{
    return QFileInfo(file).suffix().isEmpty() ? file + ending : file;
}

MainWindow::Paths local_files(const QMimeData& data)
{
    MainWindow::Paths files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            files.push_back(to_path(url.toLocalFile()));
    return files;
}

} // namespace

bool MainWindow::open(const Paths& files)
{
    workspace_.clear();
    return read_files(files);
}

bool MainWindow::add(const Paths& files) { return read_files(files); }

bool MainWindow::read_files(const Paths& files)
{
    const bool first = workspace_.empty();
    std::vector<std::string> warnings;
    std::string problems;
    for (const std::filesystem::path& path : files) {
        try {
            Workspace::ReadFile file;
            do_aside([&] { file = Workspace::read(path); });
            workspace_.add(std::move(file), warnings);
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
    fit_next_ = first;
    show_document();
    if (!warnings.empty())
        statusBar()->showMessage(
            to_qt(std::string_view(warnings.front())) +
            (warnings.size() > 1 ? tr(" (and %1 more)").arg(warnings.size() - 1) : QString()));
    if (problems.empty())
        return true;
    problems.pop_back();
    report(problems);
    return false;
}

void MainWindow::ask_and_open(bool adding)
{
    if (!adding && !let_go())
        return;
    const QStringList chosen =
        QFileDialog::getOpenFileNames(this, adding ? tr("Add Files") : tr("Open Files"),
                                      last_folder("objects"), tr(object_files));
    if (chosen.isEmpty())
        return;
    remember_folder("objects", chosen.front());
    Paths files;
    for (const QString& file : chosen)
        files.push_back(to_path(file));
    when_free([this, files, adding] { (void)(adding ? add(files) : open(files)); });
}

bool MainWindow::save_to(const std::filesystem::path& file, bool foreground_only)
{
    try {
        do_aside([&] { workspace_.write(file, foreground_only); });
    } catch (const std::bad_alloc&) {
        report(fmt::format("{}: cannot be written: there is too little memory", file.string()));
        return false;
    } catch (const std::exception& error) {
        const std::string what = error.what();
        const bool named = what.find(file.filename().string()) != std::string::npos;
        report(named ? what : fmt::format("{}: {}", file.string(), what));
        return false;
    }
    if (!foreground_only)
        workspace_.saved_as(file);
    remember(file);
    update_state();
    statusBar()->showMessage(tr("Wrote %1.").arg(to_qt(file)), 5000);
    return true;
}

bool MainWindow::save()
{
    return workspace_.path().empty() ? ask_and_save(false) : save_to(workspace_.path(), false);
}

bool MainWindow::ask_and_save(bool foreground_only)
{
    const QString chosen = QFileDialog::getSaveFileName(
        this, foreground_only ? tr("Save Foreground Layers") : tr("Save Scene"),
        last_folder("objects"), tr(object_files));
    if (chosen.isEmpty())
        return false;
    remember_folder("objects", chosen);
    return save_to(to_path(with_ending(chosen, ".lwo")), foreground_only);
}

void MainWindow::ask_and_export()
{
    const QString chosen = QFileDialog::getSaveFileName(this, tr("Export Picture"),
                                                        last_folder("pictures"), tr(picture_files));
    if (chosen.isEmpty())
        return;
    remember_folder("pictures", chosen);
    export_picture_to(to_path(with_ending(chosen, ".png")));
}

void MainWindow::export_picture_to(const std::filesystem::path& file, unsigned passes)
{
    const auto scene = tracer_.shown().scene;
    if (scene == nullptr)
        return;
    const picture::Look look = tracer_.look();
    const picture::View view = viewport_->view();
    const double scale = viewport_->devicePixelRatioF();
    try {
        do_aside([&] {
            formats::check_output_path(file);
            picture::Progressive picture(scene, view, look);
            while (picture.passes() < passes)
                picture.add_pass();
            picture::Image image = picture.image();
            if (look.map != nullptr)
                picture::draw_legend(image, *look.map, scale);
            formats::FileWriter writer(file);
            writer.write(picture::encode_png(image));
            writer.commit();
        });
        statusBar()->showMessage(tr("Wrote %1.").arg(to_qt(file)), 5000);
    } catch (const std::exception& error) {
        report(error.what());
    }
}

void MainWindow::close_scene()
{
    if (!let_go())
        return;
    when_free([this] {
        workspace_.clear();
        show_document();
    });
}

bool MainWindow::let_go()
{
    if (panel_open_ || running_)
        return false;
    if (!workspace_.modified())
        return true;
    const auto answer = QMessageBox::question(
        this, tr("Unsaved Changes"),
        tr("Save the changes to %1?").arg(to_qt(std::string_view(workspace_.title()))),
        QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

void MainWindow::remember(const std::filesystem::path& file)
{
    constexpr qsizetype most = 10;
    QSettings settings;
    QStringList recent = settings.value("recent").toStringList();
    const QString name = to_qt(std::filesystem::absolute(file));
    recent.removeAll(name);
    recent.prepend(name);
    settings.setValue("recent", recent.mid(0, most));
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (panel_open_ && front_end_.dialog() != nullptr)
        front_end_.dialog()->raise();
    if (!let_go()) {
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
    when_free([this, files] { add(files); });
}

} // namespace desktop
