// SPDX-License-Identifier: MIT
// Scenes that are kept while a command runs, and found again.
#include <exception>

#include <QMessageBox>
#include <QPushButton>

#include "desktop/message_box.h"
#include "desktop/recovery/kept_scenes.h"
#include "desktop/recovery/scene_keeper.h"
#include "desktop/text.h"
#include "desktop/window/main_window.h"

namespace desktop {

/// Starts the SceneKeeper if the scene has unsaved changes. The command runs even if this fails.
void MainWindow::keep_scene(SceneKeeper& keeper)
{
    if (!workspace_.modified())
        return;
    try {
        const KeptScene scene{new_kept_file(), workspace_.title(), workspace_.session().roles()};
        if (!tracer_.pause())
            return;
        const bool kept = keeper.start([&] {
            write_kept_note(scene);
            workspace_.write(scene.file, false);
        });
        tracer_.resume();
        if (!kept)
            show_message(tr("The system allows no copy of the scene for safety."));
    } catch (const std::exception& error) {
        show_message(
            tr("No copy of the scene is kept for safety: %1").arg(printable(error.what())));
    }
}

bool MainWindow::offer_kept_scenes()
{
    for (const KeptScene& scene : kept_scenes()) {
        MessageBox box(QMessageBox::Question, tr("Dastrel Modeler"),
                       tr("The window ended in the middle of a command. The scene %1 was kept as "
                          "it was before that.")
                           .arg(printable(scene.title)),
                       tr("Open it? It stays kept until it is saved or discarded."),
                       QMessageBox::Open | QMessageBox::Discard | QMessageBox::Cancel, this);
        box.button(QMessageBox::Cancel)->setText(tr("Ask Me Later"));
        box.setDefaultButton(QMessageBox::Open);
        switch (box.exec()) {
        case QMessageBox::Open:
            if (open_kept(scene))
                return true;
            break;
        case QMessageBox::Discard:
            remove_kept(scene.file);
            break;
        default:
            break;
        }
    }
    return false;
}

bool MainWindow::open_kept(const KeptScene& scene)
{
    try {
        Workspace::ReadFile file;
        run_in_background([&] { file = Workspace::read(scene.file); });
        file.path = scene.title + from_qt(tr(" (recovered)"));
        tracer_.forget_document();
        workspace_.begin_kept(std::move(file), scene.roles);
        kept_file_ = scene.file;
        fit_next_ = true;
        show_document();
        return true;
    } catch (const std::exception& error) {
        report(error.what());
        return false;
    }
}

/// Deletes the recovery file of the open scene.
void MainWindow::forget_kept() noexcept
{
    if (!kept_file_.empty())
        remove_kept(kept_file_);
    kept_file_.clear();
}

} // namespace desktop
