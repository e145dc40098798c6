// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "modeler/form_panel.h"

class QWidget;

namespace desktop {

/// The editor widget of one control of a panel. Changes by the user are written to the panel at
/// once. Unchanged values are never written back, so they stay exact even if displayed rounded.
class ControlEditor {
public:
    /// Called after each edit: empty string if the panel accepted the value, else the error
    /// message.
    using Edited = std::function<void(const QString& problem)>;

    ControlEditor() = default;
    ControlEditor(const ControlEditor&) = delete;
    ControlEditor& operator=(const ControlEditor&) = delete;
    virtual ~ControlEditor() = default;

    /// The widget; owned by its parent.
    [[nodiscard]] virtual QWidget* widget() const = 0;
    /// Displays the panel's value, if it has changed. Invalid text in the field is kept if
    /// `keep_typed` is true, and replaced by the value otherwise.
    virtual void refresh(bool keep_typed) = 0;
    /// The error message for the text in the field, or empty.
    [[nodiscard]] virtual QString problem() const { return {}; }
};

/// Creates the editor of a control. `panel` must outlive it.
[[nodiscard]] std::unique_ptr<ControlEditor> make_editor(modeler::FormPanel& panel,
                                                         const modeler::Control& control,
                                                         ControlEditor::Edited edited,
                                                         QWidget* parent);

} // namespace desktop
