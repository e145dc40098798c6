// SPDX-License-Identifier: MIT
#include "desktop/presets/preset_bar.h"

#include <exception>
#include <utility>
#include <vector>

#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>

#include "desktop/text.h"
#include "modeler/errors.h"
#include "settings/form_filling.h"
#include "settings/given.h"

namespace desktop {

namespace {

const char* const file_kinds = "Settings files (*.json);;All files (*)";

/// Puts the values of a form back unless told that they may stay.
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
                // A popup whose map is gone held a place that is in its list no more.
            }
        }
    }

    void keep_new() noexcept { old_.clear(); }

private:
    modeler::FormPanel& panel_;
    std::vector<std::pair<modeler::ControlId, modeler::ControlValue>> old_;
};

QPushButton* add_button(QBoxLayout& row, const QString& text, const QString& tip, QWidget* parent)
{
    auto* const button = new QPushButton(text, parent);
    button->setAutoDefault(false);
    button->setToolTip(tip);
    button->setAccessibleDescription(tip);
    row.addWidget(button);
    return button;
}

} // namespace

PresetBar::PresetBar(modeler::FormPanel& panel, PresetStore& store, QWidget* parent)
    : QWidget(parent), panel_(panel), store_(store), list_(new QComboBox(this))
{
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    auto* const label = new QLabel(tr("P&resets:"), this);
    label->setBuddy(list_);
    list_->setObjectName("presets");
    list_->setAccessibleName(tr("Presets"));
    list_->setToolTip(tr("Choose a preset to fill the panel with its values"));
    list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    list_->setMinimumContentsLength(10);
    row->addWidget(label);
    row->addWidget(list_, 1);
    auto* const save = add_button(*row, tr("&Save..."), tr("Keep these values under a name"), this);
    delete_ = add_button(*row, tr("&Delete"), tr("Delete the chosen preset"), this);
    auto* const import =
        add_button(*row, tr("&Import..."), tr("Fill the panel from a settings file"), this);
    auto* const exported =
        add_button(*row, tr("E&xport..."),
                   tr("Write these values as a settings file for the command line"), this);
    connect(list_, &QComboBox::activated, this, [this](int index) {
        if (index > 0)
            load(list_->itemText(index));
        delete_->setEnabled(index > 0);
    });
    connect(save, &QPushButton::clicked, this, [this] {
        bool confirmed = false;
        const QString name = QInputDialog::getText(
            this, tr("Save Preset"), tr("Name of the preset:"), QLineEdit::Normal,
            list_->currentIndex() > 0 ? list_->currentText() : QString(), &confirmed);
        if (confirmed)
            save_as(name.trimmed());
    });
    connect(delete_, &QPushButton::clicked, this, [this] {
        const QString name = list_->currentText();
        if (QMessageBox::question(this, tr("Delete Preset"), tr("Delete '%1'?").arg(name)) ==
            QMessageBox::Yes)
            remove(name);
    });
    connect(import, &QPushButton::clicked, this, [this] {
        const QString file =
            QFileDialog::getOpenFileName(this, tr("Import Settings"), {}, tr(file_kinds));
        if (!file.isEmpty())
            import_file(to_path(file));
    });
    connect(exported, &QPushButton::clicked, this, [this] {
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
        emit told(to_qt(std::string_view(error.what())));
    }
}

void PresetBar::save_as(const QString& name)
{
    guarded([&] {
        store_.save(from_qt(name), settings::settings_text(settings::read_form(panel_)));
        list_presets(name);
        emit told(tr("Saved the preset '%1'.").arg(name));
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
        emit told(tr("Deleted the preset '%1'.").arg(name));
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
        emit told(notes.isEmpty() ? tr("Took the values of '%1'.").arg(to_qt(file.stem())) : notes);
    });
}

void PresetBar::export_file(const std::filesystem::path& file)
{
    guarded([&] {
        write_text(file, settings::settings_text(settings::read_form(panel_)));
        emit told(tr("Wrote %1.").arg(to_qt(file)));
    });
}

} // namespace desktop
