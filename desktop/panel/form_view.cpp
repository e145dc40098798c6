// SPDX-License-Identifier: MIT
#include "desktop/panel/form_view.h"

#include <algorithm>

#include <QFormLayout>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include "desktop/panel/control_slot.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// Makes a widget visible: activates its tabs and scrolls to it.
void reveal(QWidget* widget)
{
    QWidget* page = widget;
    for (QWidget* above = widget->parentWidget(); above != nullptr; above = above->parentWidget()) {
        if (auto* const tabs = qobject_cast<QTabWidget*>(above)) {
            for (int i = 0; i < tabs->count(); ++i)
                if (tabs->widget(i)->isAncestorOf(page))
                    tabs->setCurrentIndex(i);
        } else if (auto* const scroll = qobject_cast<QScrollArea*>(above)) {
            scroll->ensureWidgetVisible(widget);
        }
    }
}

} // namespace

FormView::FormView(modeler::FormPanel& panel, QWidget* parent) : QWidget(parent), panel_(panel)
{
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    for (const modeler::TabSet& set : panel.form().tab_sets) {
        auto* const tabs = new QTabWidget(this);
        // A click focuses the tab. Otherwise Qt would move the focus from the control that is now
        // hidden to another one, and the form would scroll there.
        tabs->tabBar()->setFocusPolicy(Qt::StrongFocus);
        if (!set.title.empty())
            tabs->setAccessibleName(to_qt(std::string_view(set.title)));
        for (const modeler::ControlId id : set.groups)
            if (const modeler::ControlGroup* const group = panel.find_group(id))
                tabs->addTab(make_group(*group), to_qt(std::string_view(group->title)));
        column->addWidget(tabs);
    }
    for (const modeler::ControlId id : panel.outside_tabs()) {
        const modeler::ControlGroup& group = *panel.find_group(id);
        auto* const box = new QGroupBox(to_qt(std::string_view(group.title)), this);
        (new QVBoxLayout(box))->addWidget(make_group(group));
        column->addWidget(box);
    }
    add_outside(*column);
    for (std::size_t i = 1; i < slots_.size(); ++i) {
        // Tab order: slot and editor; only one of them accepts focus at a time.
        setTabOrder(slots_[i - 1]->editor().widget(), slots_[i]);
        setTabOrder(slots_[i], slots_[i]->editor().widget());
    }
    refresh();
}

QWidget* FormView::make_group(const modeler::ControlGroup& group)
{
    auto* const page = new QWidget(this);
    auto* const rows = new QFormLayout(page);
    rows->setVerticalSpacing(0);
    for (const modeler::ControlId id : group.members)
        if (const modeler::Control* const control = panel_.find(id))
            add_control(*rows, *control);
    return page;
}

void FormView::add_control(QFormLayout& rows, const modeler::Control& control)
{
    ControlSlot* const slot = make_slot(control, rows.parentWidget());
    if (control.kind == modeler::ControlKind::button) {
        rows.addRow(slot);
    } else {
        rows.addRow(slot->label(), slot);
    }
    if (!control.divider_after)
        return;
    auto* const line = new QFrame(rows.parentWidget());
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    rows.addRow(line);
}

/// Adds the controls without a group: first those with a value, as rows, then the buttons, side by
/// side.
void FormView::add_outside(QBoxLayout& column)
{
    auto* const page = new QWidget(this);
    auto* const rows = new QFormLayout(page);
    auto* const buttons = new QHBoxLayout;
    for (const modeler::ControlId id : panel_.outside_groups()) {
        const modeler::Control& control = *panel_.find(id);
        if (control.kind == modeler::ControlKind::button)
            buttons->addWidget(make_slot(control, page));
        else
            add_control(*rows, control);
    }
    buttons->addStretch(1);
    rows->addRow(buttons);
    column.addWidget(page);
}

ControlSlot* FormView::make_slot(const modeler::Control& control, QWidget* parent)
{
    // A button may change any value; discard text typed in fields.
    const bool is_button = control.kind == modeler::ControlKind::button;
    const auto edited = [this, is_button](const QString& problem) {
        refresh(!is_button);
        emit notified(problem);
        emit changed();
    };
    const auto tried = [this](const QString& message) { emit notified(message); };
    slots_.push_back(new ControlSlot(panel_, control, edited, tried, parent));
    return slots_.back();
}

void FormView::refresh(bool keep_typed)
{
    for (ControlSlot* const slot : slots_)
        slot->refresh(keep_typed);
}

ControlSlot* FormView::slot_of(modeler::ControlId id) const noexcept
{
    const auto found = std::find_if(slots_.begin(), slots_.end(),
                                    [id](const ControlSlot* slot) { return slot->id() == id; });
    return found != slots_.end() ? *found : nullptr;
}

void FormView::focus_first()
{
    if (!slots_.empty())
        slots_.front()->focus();
}

bool FormView::has_problem() const
{
    return std::any_of(slots_.begin(), slots_.end(),
                       [](ControlSlot* slot) { return !slot->editor().problem().isEmpty(); });
}

bool FormView::go_to_problem()
{
    for (ControlSlot* const slot : slots_) {
        const QString problem = slot->editor().problem();
        if (problem.isEmpty())
            continue;
        reveal(slot);
        slot->focus();
        emit notified(slot->objectName() + ": " + problem);
        return true;
    }
    return false;
}

} // namespace desktop
