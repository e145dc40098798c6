// SPDX-License-Identifier: MIT
#include "desktop/presets/preset_bar.h"

#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

#include <QAction>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>

#include "desktop/message_box.h"
#include "desktop/panel/popup_list.h"
#include "desktop/text.h"
#include "modeler/errors.h"
#include "settings/form_filling.h"
#include "settings/given.h"

namespace desktop {

namespace {

const char* const file_kinds = "Settings files (*.json);;All files (*)";

/// Restores the values of a form unless committed.
class ValuesGuard {
public:
    explicit ValuesGuard(modeler::FormPanel& panel) : panel_(panel)
    {
        for (const modeler::Control& control : panel.form().controls)
            if (control.kind != modeler::ControlKind::button)
                old_.emplace_back(control.id, control.value);
    }
    ValuesGuard(const ValuesGuard&) = delete;
    ValuesGuard& operator=(const ValuesGuard&) = delete;
    ~ValuesGuard()
    {
        for (const auto& [id, value] : old_) {
            try {
                if (panel_.find(id)->value != value)
                    panel_.fill(id, value);
            } catch (const modeler::PanelRefusal&) {
                // The old index of a popup may be out of range if its map no longer exists.
            }
        }
    }

    void keep_new() noexcept { old_.clear(); }

private:
    modeler::FormPanel& panel_;
    std::vector<std::pair<modeler::ControlId, modeler::ControlValue>> old_;
};

QAction* add_entry(QMenu& menu, const QString& text, const QString& tip)
{
    QAction* const entry = menu.addAction(text);
    entry->setToolTip(tip);
    return entry;
}

} // namespace

PresetBar::PresetBar(modeler::FormPanel& panel, PresetStore& store, QWidget* parent)
    : QWidget(parent), panel_(panel), store_(store), list_(new PopupList(this))
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* const label = new QLabel(tr("P&resets:"), this);
    label->setBuddy(list_);
    list_->setObjectName("presets");
    list_->setAccessibleName(tr("Presets"));
    list_->setToolTip(tr("Choose a preset to fill the panel with its values"));
    row->addWidget(label);
    row->addWidget(list_, 1);
    // One button with a menu: beside the view there is little width.
    auto* const manage = new QPushButton(tr("&Manage"), this);
    manage->setAutoDefault(false);
    manage->setToolTip(tr("Save, delete, import and export presets"));
    auto* const menu = new QMenu(manage);
    menu->setToolTipsVisible(true);
    manage->setMenu(menu);
    row->addWidget(manage);
    QAction* const save = add_entry(*menu, tr("&Save..."), tr("Keep these values under a name"));
    delete_ = add_entry(*menu, tr("&Delete"), tr("Delete the chosen preset"));
    menu->addSeparator();
    QAction* const import =
        add_entry(*menu, tr("&Import..."), tr("Fill the panel from a settings file"));
    QAction* const exported = add_entry(
        *menu, tr("E&xport..."), tr("Write these values as a settings file for the command line"));
    connect(list_, &QComboBox::activated, this, [this](int index) {
        if (index > 0)
            load(list_->itemText(index));
        delete_->setEnabled(index > 0);
    });
    connect(save, &QAction::triggered, this, [this] {
        bool confirmed = false;
        const QString name = QInputDialog::getText(
            this, tr("Save Preset"), tr("Name of the preset:"), QLineEdit::Normal,
            list_->currentIndex() > 0 ? list_->currentText() : QString(), &confirmed);
        if (confirmed)
            save_as(name.trimmed());
    });
    connect(delete_, &QAction::triggered, this, [this] {
        const QString name = list_->currentText();
        MessageBox box(QMessageBox::Question, tr("Delete Preset"), tr("Delete '%1'?").arg(name), {},
                       QMessageBox::Yes | QMessageBox::No, this);
        if (box.exec() == QMessageBox::Yes)
            remove(name);
    });
    connect(import, &QAction::triggered, this, [this] {
        const QString file =
            QFileDialog::getOpenFileName(this, tr("Import Settings"), {}, tr(file_kinds));
        if (!file.isEmpty())
            import_file(to_path(file));
    });
    connect(exported, &QAction::triggered, this, [this] {
        const QString file = QFileDialog::getSaveFileName(this, tr("Export Settings"),
                                                          "settings.json", tr(file_kinds));
        if (!file.isEmpty())
            export_file(to_path(file));
    });
    list_presets({});
}

void PresetBar::list_presets(const QString& current)
{
    const QSignalBlocker quiet(list_);
    list_->clear();
    list_->addItem(tr("(none)"));
    for (const std::string& name : store_.names())
        list_->addItem(to_qt(std::string_view(name)));
    const int index = current.isEmpty() ? 0 : list_->findText(current);
    list_->setCurrentIndex(index < 0 ? 0 : index);
    delete_->setEnabled(list_->currentIndex() > 0);
}

void PresetBar::guarded(const std::function<void()>& work)
{
    try {
        work();
    } catch (const std::exception& error) {
        emit notified(to_qt(std::string_view(error.what())));
    }
}

void PresetBar::save_as(const QString& name)
{
    guarded([&] {
        store_.save(from_qt(name), settings::settings_text(settings::read_form(panel_)));
        list_presets(name);
        emit notified(tr("Saved the preset '%1'.").arg(name));
    });
}

void PresetBar::load(const QString& name)
{
    guarded([&] { import_file(store_.file_of(from_qt(name))); });
}

void PresetBar::remove(const QString& name)
{
    guarded([&] {
        store_.remove(from_qt(name));
        list_presets({});
        emit notified(tr("Deleted the preset '%1'.").arg(name));
    });
}

void PresetBar::import_file(const std::filesystem::path& file)
{
    guarded([&] {
        const std::vector<settings::GivenSetting> given = settings::read_settings_file(file);
        ValuesGuard guard(panel_);
        QString notes;
        for (const std::string& note : settings::fill_form(panel_, given))
            notes += (notes.isEmpty() ? "" : "\n") + to_qt(std::string_view(note));
        guard.keep_new();
        emit loaded();
        emit notified(notes.isEmpty() ? tr("Took the values of '%1'.").arg(to_qt(file.stem()))
                                      : notes);
    });
}

void PresetBar::export_file(const std::filesystem::path& file)
{
    guarded([&] {
        if (is_protected_ && is_protected_(file))
            throw std::runtime_error(from_qt(
                tr("%1 is a file of this scene; choose another name").arg(printable(file))));
        write_text(file, settings::settings_text(settings::read_form(panel_)));
        emit notified(tr("Wrote %1.").arg(to_qt(file)));
    });
}

} // namespace desktop
