// SPDX-License-Identifier: MIT
#include "desktop/panel/number_field.h"

#include <memory>

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QWheelEvent>

namespace desktop {

NumberField::NumberField(QWidget* parent) : QAbstractSpinBox(parent)
{
    setAlignment(Qt::AlignRight);
    setFocusPolicy(Qt::StrongFocus); // the wheel alone does not bring the focus here
    setMinimumWidth(fontMetrics().horizontalAdvance("-179.9999") * 3 / 2);
    connect(lineEdit(), &QLineEdit::textEdited, this, &NumberField::edited);
}

void NumberField::set_text(const QString& text) { lineEdit()->setText(text); }

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

/// The menu of a line of text, and the field's own actions.
void NumberField::contextMenuEvent(QContextMenuEvent* event)
{
    const std::unique_ptr<QMenu> menu(lineEdit()->createStandardContextMenu());
    if (!actions().isEmpty())
        menu->addSeparator();
    menu->addActions(actions());
    menu->exec(event->globalPos());
}

} // namespace desktop
