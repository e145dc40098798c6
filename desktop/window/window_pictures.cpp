// SPDX-License-Identifier: MIT
// Pictures of the view.
#include <exception>
#include <new>
#include <optional>

#include <fmt/format.h>

#include <QFileDialog>

#include "desktop/pictures/picture_dialog.h"
#include "desktop/pictures/view_picture.h"
#include "desktop/text.h"
#include "desktop/window/file_dialogs.h"
#include "desktop/window/main_window.h"
#include "formats/errors.h"
#include "formats/file_writer.h"
#include "picture/image/png.h"

namespace desktop {

PictureOptions MainWindow::shown_picture() const
{
    const picture::View view = viewport_->view();
    PictureOptions options;
    options.width = view.width();
    options.height = view.height();
    options.grid = action(ActionId::grid)->isChecked();
    options.axes = action(ActionId::axes)->isChecked();
    return options;
}

void MainWindow::ask_and_export()
{
    PictureDialog dialog(shown_picture(), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::filesystem::path proposed =
        workspace_.suggested_file(last_folder("pictures"), "", ".png");
    const QString chosen = QFileDialog::getSaveFileName(this, tr("Export Picture"), to_qt(proposed),
                                                        tr("PNG pictures (*.png)"));
    if (chosen.isEmpty())
        return;
    remember_folder("pictures", chosen);
    export_picture_to(with_ending(chosen, ".png"), dialog.options());
}

bool MainWindow::export_picture_to(const std::filesystem::path& file, const PictureOptions& options,
                                   unsigned passes)
{
    const ShownView shown{tracer_.shown().scene, viewport_->view(), tracer_.look(),
                          viewport_->devicePixelRatioF()};
    if (shown.scene == nullptr || background_running_)
        return false;
    bool written = false;
    try {
        formats::check_output_path(file);
        if (!workspace_.open_file_at(file).empty())
            throw formats::FileError(file, "cannot be written",
                                     "it is a file of this scene; choose another name");
        const QString caption =
            tr("Tracing %1 by %2 pixels...").arg(options.width).arg(options.height);
        run_with_progress(tr("Export Picture"), caption, [&](WorkState& state) {
            const std::optional<picture::Image> image = draw_view(shown, options, passes, state);
            if (!image)
                return;
            const std::vector<std::byte> bytes = picture::encode_png(*image);
            if (state.cancelled)
                return;
            formats::FileWriter writer(file);
            writer.write(bytes);
            writer.commit();
            written = true;
        });
        show_message(written ? tr("Wrote %1.").arg(printable(file))
                             : tr("The picture was given up; nothing was written."));
    } catch (const std::bad_alloc&) {
        report(fmt::format("{}: there is too little memory for a picture of {} by {} pixels",
                           file.string(), options.width, options.height));
    } catch (const std::exception& error) {
        report(error.what());
    }
    return written;
}

} // namespace desktop
