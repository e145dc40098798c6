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

/// The place of one control in a form: its editor with the sign of its unit, and what is known of
/// it from the command's settings: a tool tip, a mark and a button to reset it where the value is
/// not the default. While a rule disables the control the editor is greyed, and the slot takes
/// clicks and the keyboard's focus in its place, so that trying the control can be answered.
class ControlSlot : public QWidget {
    Q_OBJECT

public:
    /// @param tried  told the rule's message when a person tries the disabled control
    ControlSlot(modeler::FormPanel& panel, const modeler::Control& control,
                ControlEditor::Edited edited, std::function<void(const QString&)> tried,
                QWidget* parent);
    ControlSlot(const ControlSlot&) = delete;
    ControlSlot& operator=(const ControlSlot&) = delete;
    ~ControlSlot() override;

    [[nodiscard]] modeler::ControlId id() const noexcept { return id_; }
    [[nodiscard]] ControlEditor& editor() noexcept { return *editor_; }
    /// The control's label, which stands beside the slot; null for a button, which shows its own.
    [[nodiscard]] QLabel* label() const noexcept { return label_; }

    /// Shows the panel's value (see ControlEditor) and whether the control is enabled.
    void refresh(bool keep_typed);
    /// Sets the keyboard on the control.
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
    QString help_; ///< of the setting, plain text
    QString default_text_;
    std::optional<modeler::ControlValue> default_;
    QAction* reset_ = nullptr; ///< null where no default is known
    QToolButton* reset_button_ = nullptr;
};

} // namespace desktop
