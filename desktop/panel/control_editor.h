// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QString>

#include "modeler/form_panel.h"

class QWidget;

namespace desktop {

/// The widget in which one control of a panel is edited. What a person changes goes into the panel
/// at once; a value that nobody changed is never written back, so that it stays exact however
/// little of it is shown.
class ControlEditor {
public:
    /// Told what became of an edit: an empty text when the panel took it, else what is wrong.
    using Edited = std::function<void(const QString& problem)>;

    ControlEditor() = default;
    ControlEditor(const ControlEditor&) = delete;
    ControlEditor& operator=(const ControlEditor&) = delete;
    virtual ~ControlEditor() = default;

    /// Belongs to the parent that it was made with.
    [[nodiscard]] virtual QWidget* widget() const = 0;
    /// Shows the panel's value, unless it is the one that is shown already. Wrong text that stands
    /// in the field stays there with `keep_typed`, and gives way to the value without.
    virtual void refresh(bool keep_typed) = 0;
    /// What is wrong with what stands in the field, or empty.
    [[nodiscard]] virtual QString problem() const { return {}; }
};

/// Makes the editor of a control. `panel` is used as long as the editor lives.
[[nodiscard]] std::unique_ptr<ControlEditor> make_editor(modeler::FormPanel& panel,
                                                         const modeler::Control& control,
                                                         ControlEditor::Edited edited,
                                                         QWidget* parent);

} // namespace desktop
