// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSpinBox>

namespace desktop {

/// A line for a number with small buttons for steps up and down. What is typed, and what a step
/// is, its owner decides. The wheel makes steps while the field has the keyboard's focus, and
/// scrolls the form otherwise. Enter after typing ends the typing and goes no further, so that it
/// does not confirm a form by chance; pressed again, or with Ctrl, it is the form's.
class NumberField : public QAbstractSpinBox {
    Q_OBJECT

public:
    explicit NumberField(QWidget* parent);

    void set_text(const QString& text);
    void stepBy(int steps) override;

signals:
    /// A person typed.
    void edited(const QString& text);
    /// A person asked for steps: up, or down where it is negative.
    void stepped(int steps);

protected:
    [[nodiscard]] StepEnabled stepEnabled() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool typing_ = false; ///< since the field was entered, or since Enter
};

} // namespace desktop
