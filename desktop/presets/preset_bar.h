// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <utility>

#include <QWidget>

#include "desktop/presets/preset_store.h"
#include "modeler/form_panel.h"

class QAction;

namespace desktop {

class PopupList;

/// Presets of the panel's values: saved under a name, loaded, deleted, imported and exported as the
/// settings file that the command line takes.
class PresetBar : public QWidget {
    Q_OBJECT

public:
    /// Both are used as long as the bar lives.
    PresetBar(modeler::FormPanel& panel, PresetStore& store, QWidget* parent);

    /// Files that an export must not replace.
    void protect(std::function<bool(const std::filesystem::path&)> is_protected)
    {
        is_protected_ = std::move(is_protected);
    }

    /// The same as the buttons do, without asking for a name or file.
    void save_as(const QString& name);
    void load(const QString& name);
    void remove(const QString& name);
    void import_file(const std::filesystem::path& file);
    void export_file(const std::filesystem::path& file);

signals:
    /// Values of the panel were changed.
    void loaded();
    /// A sentence about what was done or went wrong.
    void told(const QString& sentence);

private:
    void list_presets(const QString& current);
    void guarded(const std::function<void()>& work);

    modeler::FormPanel& panel_;
    PresetStore& store_;
    PopupList* list_;
    QAction* delete_;
    std::function<bool(const std::filesystem::path&)> is_protected_;
};

} // namespace desktop
