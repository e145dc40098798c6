// SPDX-License-Identifier: MIT
#include "desktop/window/front_end.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <optional>
#include <utility>
#include <variant>

#include <QCheckBox>
#include <QCoreApplication>

#include "desktop/message_box.h"
#include "desktop/panel/form_view.h"
#include "desktop/presets/preset_bar.h"
#include "desktop/preview/preview_strip.h"
#include "desktop/text.h"
#include "desktop/window/progress_box.h"
#include "settings/form_filling.h"

namespace desktop {

namespace {

void show_box(QMessageBox::Icon icon, const QString& title, std::string_view line1,
              std::string_view line2, QWidget* parent)
{
    MessageBox(icon, title, to_qt(line1), to_qt(line2), QMessageBox::Ok, parent).exec();
}

std::optional<int> asked_clones(const modeler::FormPanel& panel)
{
    for (const settings::UsedSetting& used : settings::read_form(panel))
        if (used.setting->field == "clone_num")
            return std::max(0, std::get<std::int32_t>(used.value));
    return std::nullopt;
}

bool limits_slopes(const modeler::FormPanel& panel)
{
    for (const settings::UsedSetting& used : settings::read_form(panel))
        if (used.setting->field == "slope_limits")
            return used.value == settings::Value(1);
    return false;
}

} // namespace

WindowFrontEnd::WindowFrontEnd(QMainWindow& parent, Preview& preview, PresetStore& store, Host host)
    : parent_(parent), preview_(preview), store_(store), host_(std::move(host))
{}

QWidget* WindowFrontEnd::parent() const
{
    return dock_ != nullptr ? static_cast<QWidget*>(dock_.get()) : &parent_;
}

void WindowFrontEnd::info(std::string_view line1, std::string_view line2)
{
    if (!in_child_)
        show_box(QMessageBox::Information, command_, line1, line2, parent());
}

void WindowFrontEnd::error(std::string_view line1, std::string_view line2)
{
    const std::string more = with_advice(line2);
    if (in_child_)
        child_errors_.push_back({std::string(line1), more});
    else
        show_box(QMessageBox::Critical, command_, line1, more, parent());
}

/// Appends advice to a command's error message: the slopes of the ground if slopes are limited, and
/// the missing model.
std::string WindowFrontEnd::with_advice(std::string_view text) const
{
    std::string all(text);
    const auto add = [&](const std::string& sentence) {
        if (!all.empty() && !sentence.empty())
            all += "\n";
        all += sentence;
    };
    if (slopes_limited_)
        add(host_.ground_slopes());
    add(host_.missing_model());
    return all;
}

bool WindowFrontEnd::ask(std::string_view title, std::string_view line1, std::string_view line2)
{
    if (in_child_)
        return false;
    MessageBox box(QMessageBox::Question, to_qt(title), to_qt(line1), to_qt(line2),
                   QMessageBox::Yes | QMessageBox::No, parent());
    return box.exec() == QMessageBox::Yes;
}

/// Uses the command's name as title, as for message boxes, since the module's title may be generic
/// ("Please wait").
std::unique_ptr<modeler::Progress> WindowFrontEnd::begin_progress(std::string_view /*title*/,
                                                                  std::string_view caption)
{
    if (in_child_)
        return nullptr;
    return std::make_unique<ProgressBox>(command_, to_qt(caption), parent_);
}

void WindowFrontEnd::open_panel(modeler::FormPanel& panel)
{
    auto* const dialog = new PanelDialog(panel, &parent_);
    auto* const strip = new PreviewStrip(panel, preview_, store_, dialog);
    strip->presets().protect(host_.is_of_scene);
    strip->own_layer().setChecked(host_.wants_own_layer());
    host_.use_own_layer(strip->own_layer().isChecked());
    QObject::connect(&strip->own_layer(), &QCheckBox::toggled, dialog,
                     [this](bool on) { host_.use_own_layer(on); });
    if (host_.warnings)
        strip->warn(host_.warnings());
    dialog->add_strip(strip);
    FormView& form = dialog->form();
    dialog->set_check(
        [this, &panel] { return host_.problem ? printable(host_.problem(panel)) : QString(); });
    const auto changed = [this, &form] { preview_.values_changed(form.has_problem()); };
    QObject::connect(&form, &FormView::changed, &form, changed);
    QObject::connect(&strip->presets(), &PresetBar::loaded, &form, [&form, changed] {
        form.refresh();
        changed();
    });
    QObject::connect(&strip->presets(), &PresetBar::notified, dialog, &PanelDialog::show_message);
    QObject::connect(dialog, &QDialog::finished, &parent_, [this] { panel_open_ = false; });
    preview_.open();
    panel_open_ = true;
    host_.panel(true, dialog->sizeHint().width());
    dock_ = std::make_unique<PanelDock>(dialog, parent_);
}

void WindowFrontEnd::reset_panel_place()
{
    PanelDock::forget_place();
    if (dock_ != nullptr)
        dock_->reset_place();
}

/// Returns true in the child.
bool WindowFrontEnd::begin_preview(const modeler::FormPanel& panel)
{
    if (!host_.pause())
        return false; // retried when the other threads are idle
    if (preview_.begin(asked_clones(panel)))
        return true;
    host_.resume();
    return false;
}

void WindowFrontEnd::close_panel() noexcept
{
    preview_.close();
    dock_.reset();
    try {
        host_.panel(false, 0);
    } catch (const std::bad_alloc&) {
        return; // only what the window shows is out of date, until it is shown next
    }
}

/// Returns whether it was left with OK; in the child, true.
bool WindowFrontEnd::ask_in_panel(modeler::FormPanel& panel)
{
    const struct Closer {
        WindowFrontEnd& front_end;
        ~Closer()
        {
            if (!front_end.in_child_) // which has no windows to close
                front_end.close_panel();
        }
    } closer{*this};
    open_panel(panel);
    // A local event loop instead of QDialog::exec, because the forked child must leave it by
    // returning from here without touching the window.
    while (panel_open_) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        if (preview_.due() && panel_open_ && begin_preview(panel)) {
            in_child_ = true;
            return true;
        }
    }
    return dock_->dialog().result() == QDialog::Accepted;
}

bool WindowFrontEnd::run_panel(modeler::FormPanel& panel)
{
    if (in_child_)
        return true;
    const bool confirmed = ask_in_panel(panel);
    slopes_limited_ = confirmed && limits_slopes(panel);
    clones_asked_ = confirmed ? asked_clones(panel) : std::nullopt;
    if (in_child_)
        return true;
    // The command will change the document, from which a ghost may still be built.
    while (!host_.pause())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                        QEventLoop::WaitForMoreEvents);
    host_.resume();
    since_ok_.start();
    return confirmed;
}

} // namespace desktop
