// SPDX-License-Identifier: MIT
#include "desktop/window/front_end.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QMessageBox>

#include "desktop/panel/form_view.h"
#include "desktop/presets/preset_bar.h"
#include "desktop/preview/preview_strip.h"
#include "desktop/text.h"
#include "desktop/window/progress_box.h"

namespace desktop {

namespace {

void show_box(QMessageBox::Icon icon, const QString& title, std::string_view line1,
              std::string_view line2, QWidget* parent)
{
    QMessageBox box(icon, title, to_qt(line1), QMessageBox::Ok, parent);
    box.setInformativeText(to_qt(line2));
    box.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    box.exec();
}

} // namespace

WindowFrontEnd::WindowFrontEnd(QWidget& parent, Preview& preview, PresetStore& store, Host host)
    : parent_(parent), preview_(preview), store_(store), host_(std::move(host))
{}

QWidget* WindowFrontEnd::parent() const
{
    return dialog_ != nullptr ? static_cast<QWidget*>(dialog_.get()) : &parent_;
}

void WindowFrontEnd::info(std::string_view line1, std::string_view line2)
{
    if (!in_child_)
        show_box(QMessageBox::Information, command_, line1, line2, parent());
}

void WindowFrontEnd::error(std::string_view line1, std::string_view line2)
{
    if (in_child_)
        child_errors_.push_back({std::string(line1), std::string(line2)});
    else
        show_box(QMessageBox::Critical, command_, line1, line2, parent());
}

bool WindowFrontEnd::ask(std::string_view title, std::string_view line1, std::string_view line2)
{
    if (in_child_)
        return false;
    QMessageBox box(QMessageBox::Question, to_qt(title), to_qt(line1),
                    QMessageBox::Yes | QMessageBox::No, parent());
    box.setInformativeText(to_qt(line2));
    return box.exec() == QMessageBox::Yes;
}

std::unique_ptr<modeler::Progress> WindowFrontEnd::begin_progress(std::string_view title,
                                                                  std::string_view caption)
{
    if (in_child_)
        return nullptr;
    return std::make_unique<ProgressBox>(to_qt(title), to_qt(caption), parent_);
}

void WindowFrontEnd::open_panel(modeler::FormPanel& panel)
{
    dialog_ = std::make_unique<PanelDialog>(panel, &parent_);
    auto* const strip = new PreviewStrip(panel, preview_, store_, dialog_.get());
    dialog_->add_strip(strip);
    FormView& form = dialog_->form();
    const auto changed = [this, &form] { preview_.values_changed(form.has_problem()); };
    QObject::connect(&form, &FormView::changed, &form, changed);
    QObject::connect(&strip->presets(), &PresetBar::loaded, &form, [&form, changed] {
        form.refresh();
        changed();
    });
    QObject::connect(&strip->presets(), &PresetBar::told, dialog_.get(), &PanelDialog::tell);
    preview_.open();
    host_.panel(true);
    // At the right edge, where it leaves most of the view to be seen.
    dialog_->adjustSize();
    const QPoint corner(parent_.width() - dialog_->width() - 24, 60);
    dialog_->move(parent_.mapToGlobal(QPoint(std::max(corner.x(), 0), corner.y())));
    dialog_->show();
}

/// Returns true in the child.
bool WindowFrontEnd::begin_preview()
{
    if (!host_.quieten())
        return false; // due again when the other threads are through
    if (preview_.begin())
        return true;
    host_.resume();
    return false;
}

bool WindowFrontEnd::run_panel(modeler::FormPanel& panel)
{
    if (in_child_)
        return true;
    open_panel(panel);
    // A loop of our own, and not the dialog's, because the child has to leave it by returning from
    // here, past nothing that belongs to the window.
    while (dialog_->isVisible()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (preview_.due() && dialog_->isVisible() && begin_preview()) {
            in_child_ = true;
            return true;
        }
    }
    preview_.close();
    const bool confirmed = dialog_->result() == QDialog::Accepted;
    dialog_.reset();
    host_.panel(false);
    // The command is about to change what a ghost may still be made from.
    while (!host_.quieten())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    host_.resume();
    since_ok_.start();
    return confirmed;
}

} // namespace desktop
