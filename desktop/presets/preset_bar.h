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

/// Tool bar for presets of the panel's values: save, load, delete, and import and export as
/// settings files of the command line.
class PresetBar : public QWidget {
    Q_OBJECT

public:
    /// Panel and store must outlive the bar.
    PresetBar(modeler::FormPanel& panel, PresetStore& store, QWidget* parent);

    /// Sets the predicate for files that an export must not overwrite.
    void protect(std::function<bool(const std::filesystem::path&)> is_protected)
    {
        is_protected_ = std::move(is_protected);
    }

    // The actions of the buttons, without asking for a name or file.
    void save_as(const QString& name);
    void load(const QString& name);
    void remove(const QString& name);
    void import_file(const std::filesystem::path& file);
    void export_file(const std::filesystem::path& file);

signals:
    /// Values of the panel were changed.
    void loaded();
    /// A message about the result of an action.
    void notified(const QString& sentence);

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
