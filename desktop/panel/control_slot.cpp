// SPDX-License-Identifier: MIT
#include "desktop/panel/control_slot.h"

#include <utility>

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>
#include <QToolButton>
#include <QToolTip>

#include "desktop/panel/control_text.h"
#include "desktop/text.h"
#include "modeler/errors.h"
#include "settings/control_help.h"
#include "settings/table.h"

namespace desktop {

ControlSlot::ControlSlot(modeler::FormPanel& panel, const modeler::Control& control,
                         ControlEditor::Edited edited, std::function<void(const QString&)> tried,
                         QWidget* parent)
    : QWidget(parent), panel_(panel), id_(control.id), edited_(edited), tried_(std::move(tried)),
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
    row->setSpacing(2);
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
    if (control.kind == modeler::ControlKind::button)
        return;
    label_ = new QLabel(label, parent);
    label_->setTextFormat(Qt::PlainText);
    label_->setBuddy(widget);
    label_->setMinimumHeight(sizeHint().height()); // in line with the text of its field
    QFont bold = label_->font();
    bold.setBold(true); // as it becomes where the value is changed; the form keeps still then
    label_->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(label) + 2);
    add_reset(*row, control);
}

ControlSlot::~ControlSlot() = default;

/// Adds help text and reset button if the control is a setting of the command.
void ControlSlot::add_reset(QBoxLayout& row, const modeler::Control& control)
{
    reset_button_ = new QToolButton(this);
    QSizePolicy policy = reset_button_->sizePolicy();
    policy.setRetainSizeWhenHidden(true); // and so do all fields where no default is known
    reset_button_->setSizePolicy(policy);
    reset_button_->setAutoRaise(true);
    reset_button_->setFocusPolicy(Qt::NoFocus); // the keyboard has the field's menu
    reset_button_->hide();
    row.addWidget(reset_button_);
    const settings::Setting* const setting = settings::setting_of(control);
    if (setting == nullptr)
        return;
    help_ = to_qt(std::string_view(settings::control_help(*setting)));
    default_ = settings::default_of(*setting, control);
    if (!default_)
        return;
    default_text_ = to_qt(std::string_view(settings::default_for_display(*setting)));
    reset_ = new QAction(tr("&Reset to the default (%1)").arg(default_text_), this);
    connect(reset_, &QAction::triggered, this, &ControlSlot::reset);
    editor_->widget()->addAction(reset_);
    reset_button_->setText(QString::fromUtf8("\u21BA"));
    reset_button_->setObjectName("reset");
    reset_button_->setAccessibleName(tr("Reset %1").arg(label_->text()));
    reset_button_->setToolTip(tr("Reset to the default (%1)").arg(default_text_));
    connect(reset_button_, &QToolButton::clicked, reset_, &QAction::trigger);
}

void ControlSlot::reset()
{
    QString problem;
    try {
        panel_.set(id_, *default_);
        editor_->refresh(false);
    } catch (const modeler::PanelRefusal& refusal) {
        problem = to_qt(std::string_view(refusal.what()));
    }
    edited_(problem);
}

/// Marks a value that is not the default: shows the reset button, makes the label bold, and sets
/// the accessible description.
void ControlSlot::mark_changed(bool enabled)
{
    const QString problem = editor_->problem();
    const bool changed = default_ && panel_.find(id_)->value != *default_;
    editor_->widget()->setAccessibleDescription(
        !problem.isEmpty() ? problem
        : changed          ? tr("changed; the default is %1").arg(default_text_)
                           : QString());
    if (reset_ == nullptr || label_ == nullptr)
        return;
    QFont font = label_->font();
    font.setBold(changed);
    label_->setFont(font);
    reset_->setEnabled(enabled && (changed || !problem.isEmpty()));
    reset_button_->setVisible(reset_->isEnabled());
}

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
    setToolTip(tool_tip(message.isEmpty() || help_.isEmpty() ? message + help_
                                                             : message + "\n\n" + help_));
    if (label_ != nullptr)
        label_->setToolTip(tool_tip(help_));
    mark_changed(enabled);
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
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), tool_tip(message), this);
}

void ControlSlot::mousePressEvent(QMouseEvent* event)
{
    // Also receives clicks on the disabled editor: Qt passes them to the parent.
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
