// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSpinBox>

namespace desktop {

/// A spin box without a value of its own: the owner interprets text and steps. The wheel steps
/// while the field has keyboard focus and scrolls the form otherwise. Enter after typing only ends
/// the input, so that it does not confirm the form by accident; a second Enter, or Ctrl+Enter, goes
/// to the form.
class NumberField : public QAbstractSpinBox {
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent);

    void set_text(const QString& text);
    void stepBy(int steps) override;

signals:
    /// The user typed.
    void edited(const QString& text);
    /// The user stepped up or, if negative, down.
    void stepped(int steps);

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool typing_ = false; ///< text was typed since the last focus-in or Enter
};

} // namespace desktop
