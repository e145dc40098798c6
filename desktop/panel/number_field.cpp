// SPDX-License-Identifier: MIT
#include "desktop/panel/number_field.h"

#include <memory>

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QWheelEvent>

namespace desktop {

NumberField::NumberField(QWidget* parent) : QAbstractSpinBox(parent)
{
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus); // the wheel alone does not bring the focus here
    setMinimumWidth(fontMetrics().horizontalAdvance("-179.9999") * 3 / 2);
    connect(lineEdit(), &QLineEdit::textEdited, this, [this](const QString& text) {
        typing_ = true;
        emit edited(text);
    });
}

void NumberField::set_text(const QString& text) { lineEdit()->setText(text); }

void NumberField::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool ends_typing = enter && typing_ && (event->modifiers() & Qt::ControlModifier) == 0;
    QAbstractSpinBox::keyPressEvent(event); // shows the result, and leaves Enter to the form
    if (enter)
        typing_ = false;
    if (ends_typing)
        event->accept();
}

void NumberField::focusOutEvent(QFocusEvent* event)
{
    typing_ = false;
    QAbstractSpinBox::focusOutEvent(event);
}

void NumberField::stepBy(int steps)
{
    emit stepped(steps);
    selectAll();
}

QAbstractSpinBox::StepEnabled NumberField::stepEnabled() const
{
    return StepUpEnabled | StepDownEnabled;
}

void NumberField::wheelEvent(QWheelEvent* event)
{
    if (hasFocus())
        QAbstractSpinBox::wheelEvent(event);
    else
        event->ignore();
}

/// The context menu of a line edit plus the field's own actions.
void NumberField::contextMenuEvent(QContextMenuEvent* event)
{
    const std::unique_ptr<QMenu> menu(lineEdit()->createStandardContextMenu());
    if (!actions().isEmpty())
        menu->addSeparator();
    menu->addActions(actions());
    menu->exec(event->globalPos());
}

} // namespace desktop
