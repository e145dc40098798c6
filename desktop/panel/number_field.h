// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractSpinBox>

namespace desktop {

/// A line for a number with small buttons for steps up and down. What is typed, and what a step
/// is, its owner decides. The wheel makes steps while the field has the keyboard's focus, and
/// scrolls the form otherwise.
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
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};

} // namespace desktop
