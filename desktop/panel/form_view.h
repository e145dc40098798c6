// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include <QString>
#include <QWidget>

#include "modeler/form_panel.h"

class QBoxLayout;
class QFormLayout;

namespace desktop {

class ControlSlot;

/// The widget of a form panel: tabs, groups, separators and controls in the order of the module's
/// description. Works for any module.
class FormView : public QWidget {
    Q_OBJECT

public:
    /// The panel must outlive the view.
    FormView(modeler::FormPanel& panel, QWidget* parent);

    /// Updates all controls after the panel was changed elsewhere.
    void refresh() { refresh(false); }

    /// The slot of a control, or null.
    [[nodiscard]] ControlSlot* slot_of(modeler::ControlId id) const noexcept;

    /// Sets the keyboard focus to the first control.
    void focus_first();

    /// Focuses the first field with invalid text and reports its error. Returns false if there is
    /// none.
    bool go_to_problem();
    [[nodiscard]] bool has_problem() const;

signals:
    /// The user changed a value, valid or not (see `has_problem`), or pressed a button.
    void changed();
    /// A message about the last action: a rule's message, an input error, or empty to clear it.
    void notified(const QString& sentence);

private:
    void refresh(bool keep_typed);
    [[nodiscard]] QWidget* make_group(const modeler::ControlGroup& group);
    void add_control(QFormLayout& rows, const modeler::Control& control);
    [[nodiscard]] ControlSlot* make_slot(const modeler::Control& control, QWidget* parent);
    void add_outside(QBoxLayout& column);

    modeler::FormPanel& panel_;
    std::vector<ControlSlot*> slots_; ///< in tab order
};

} // namespace desktop
