// SPDX-License-Identifier: MIT
#include "desktop/panel/control_slot.h"

#include <utility>

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolTip>

#include "desktop/panel/control_text.h"
#include "desktop/text.h"

namespace desktop {

ControlSlot::ControlSlot(modeler::FormPanel& panel, const modeler::Control& control,
                         ControlEditor::Edited edited, std::function<void(const QString&)> tried,
                         QWidget* parent)
    : QWidget(parent), panel_(panel), id_(control.id), tried_(std::move(tried)),
      editor_(make_editor(panel, control, std::move(edited), this))
{
    const QString label = to_qt(std::string_view(control.label));
    const QString unit = to_qt(unit_sign(control.kind));
    setObjectName(label);
    setAccessibleName(label);
    QWidget* const widget = editor_->widget();
    widget->setAccessibleName(unit.isEmpty() ? label : label + " (" + unit + ")");
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(2, 2, 2, 2);
    const bool fills = control.kind != modeler::ControlKind::button &&
                       control.kind != modeler::ControlKind::boolean;
    row->addWidget(widget, fills ? 1 : 0);
    if (fills) { // all fields are equally wide, with a unit or without
        auto* const sign = new QLabel(unit, this);
        sign->setMinimumWidth(fontMetrics().horizontalAdvance('%'));
        row->addWidget(sign);
    } else {
        row->addStretch(1);
    }
}

ControlSlot::~ControlSlot() = default;

void ControlSlot::refresh(bool keep_typed)
{
    editor_->refresh(keep_typed);
    const bool enabled = panel_.enabled(id_);
    const QString message = to_qt(panel_.disabled_message(id_));
    QWidget* const widget = editor_->widget();
    const bool keyboard_here = hasFocus() || widget->hasFocus();
    widget->setEnabled(enabled);
    setFocusPolicy(enabled ? Qt::NoFocus : Qt::StrongFocus);
    setAccessibleDescription(message);
    setToolTip(message);
    if (keyboard_here)
        focus();
}

void ControlSlot::focus()
{
    QWidget* const widget = editor_->widget();
    (widget->isEnabled() ? widget : this)->setFocus(Qt::OtherFocusReason);
}

void ControlSlot::answer()
{
    const QString message = to_qt(panel_.disabled_message(id_));
    if (message.isEmpty())
        return;
    tried_(message);
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), message, this);
}

void ControlSlot::mousePressEvent(QMouseEvent* event)
{
    // A click on the greyed editor comes here, too: disabled widgets leave it to their parents.
    answer();
    event->accept();
}

void ControlSlot::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
    if (event->reason() != Qt::MouseFocusReason) // a click has its own answer
        answer();
}

void ControlSlot::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void ControlSlot::paintEvent(QPaintEvent* /*event*/)
{
    if (!hasFocus())
        return;
    QStylePainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

} // namespace desktop
