// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QString>
#include <QWidget>

#include "desktop/panel/control_editor.h"

class QAction;
class QBoxLayout;
class QLabel;
class QToolButton;

namespace desktop {

/// One control in a form: its editor with the unit sign and, if it is a setting of the command, a
/// tool tip, and a mark and reset button while the value is not the default. While a rule disables
/// the control, the editor is greyed, and the slot receives clicks and keyboard focus instead, to
/// explain why it is disabled.
class ControlSlot : public QWidget {
    Q_OBJECT

public:
    /// @param tried  called with the rule's message when the user clicks the disabled control
    ControlSlot(modeler::FormPanel& panel, const modeler::Control& control,
                ControlEditor::Edited edited, std::function<void(const QString&)> tried,
                QWidget* parent);
    ControlSlot(const ControlSlot&) = delete;
    ControlSlot& operator=(const ControlSlot&) = delete;
    ~ControlSlot() override;

    [[nodiscard]] modeler::ControlId id() const noexcept { return id_; }
    [[nodiscard]] ControlEditor& editor() noexcept { return *editor_; }
    /// The label widget beside the slot; null for a button.
    [[nodiscard]] QLabel* label() const noexcept { return label_; }

    /// Updates the value (see ControlEditor) and the enabled state.
    void refresh(bool keep_typed);
    /// Sets the keyboard focus to the control.
    void focus();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void add_reset(QBoxLayout& row, const modeler::Control& control);
    void mark_changed(bool enabled);
    void reset();
    void answer();

    modeler::FormPanel& panel_;
    modeler::ControlId id_;
    ControlEditor::Edited edited_;
    std::function<void(const QString&)> tried_;
    std::unique_ptr<ControlEditor> editor_;
    QLabel* label_ = nullptr;
    QString help_; ///< help text of the setting, plain text
    QString default_text_;
    std::optional<modeler::ControlValue> default_;
    QAction* reset_ = nullptr; ///< null if no default is known
    QToolButton* reset_button_ = nullptr;
};

} // namespace desktop
