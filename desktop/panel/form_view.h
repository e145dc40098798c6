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

/// Draws a form panel: its tabs, groups, dividers and controls, in the order in which the module
/// describes them. Knows nothing of any particular module.
class FormView : public QWidget {
    Q_OBJECT

public:
    /// The panel is used as long as the view lives.
    FormView(modeler::FormPanel& panel, QWidget* parent);

    /// Shows the values and rules of the moment, after something else than this view changed them.
    void refresh() { refresh(false); }

    /// The slot of a control, or null.
    [[nodiscard]] ControlSlot* slot_of(modeler::ControlId id) const noexcept;

    /// Sets the keyboard on the first control.
    void focus_first();

    /// Goes to the first field whose text is no value and tells what is wrong with it. Returns
    /// false when there is none.
    bool go_to_problem();
    [[nodiscard]] bool has_problem() const;

signals:
    /// A person changed something, rightly or wrongly (see `has_problem`), or pressed a button.
    void changed();
    /// A sentence about what was just tried: a rule's message, what is wrong with a text, or
    /// nothing any more.
    void told(const QString& sentence);

private:
    void refresh(bool keep_typed);
    [[nodiscard]] QWidget* make_group(const modeler::ControlGroup& group);
    void add_control(QFormLayout& rows, const modeler::Control& control);
    [[nodiscard]] ControlSlot* make_slot(const modeler::Control& control, QWidget* parent);
    void add_outside(QBoxLayout& column);

    modeler::FormPanel& panel_;
    std::vector<ControlSlot*> slots_; ///< in the order of the keyboard
};

} // namespace desktop
