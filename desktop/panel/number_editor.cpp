// SPDX-License-Identifier: MIT
#include "desktop/panel/number_editor.h"

#include <utility>

#include <QPalette>

#include "desktop/panel/control_text.h"
#include "desktop/panel/number_field.h"
#include "desktop/text.h"
#include "modeler/errors.h"
#include "settings/values.h"

namespace desktop {

NumberEditor::NumberEditor(modeler::FormPanel& panel, const modeler::Control& control,
                           Edited edited, QWidget* parent)
    : panel_(panel), id_(control.id), kind_(control.kind), edited_(std::move(edited)),
      field_(new NumberField(parent))
{
    QObject::connect(field_, &NumberField::edited, field_,
                     [this](const QString& text) { take_text(text); });
    QObject::connect(field_, &NumberField::stepped, field_,
                     [this](int steps) { take_steps(steps); });
    QObject::connect(field_, &NumberField::editingFinished, field_, [this] { leave(); });
}

QWidget* NumberEditor::widget() const { return field_; }

void NumberEditor::refresh(bool keep_typed)
{
    const modeler::ControlValue& value = panel_.find(id_)->value;
    if (shown_ == value && (keep_typed || problem_.isEmpty()))
        return;
    show_value(value);
}

void NumberEditor::show_value(const modeler::ControlValue& value)
{
    shown_ = value;
    given_ = value;
    given_text_ = to_qt(std::string_view(shown_text(kind_, value)));
    field_->set_text(given_text_);
    mark({});
}

void NumberEditor::take_text(const QString& text)
{
    QString problem;
    try {
        // The original text means the original value, which may have more digits than displayed.
        const modeler::ControlValue value =
            text == given_text_ ? given_ : typed_value(kind_, from_qt(text));
        panel_.set(id_, value);
        shown_ = value;
    } catch (const settings::ValueError& error) {
        problem = to_qt(std::string_view(error.what()));
    } catch (const modeler::PanelRefusal& refusal) {
        problem = to_qt(std::string_view(refusal.what()));
    }
    mark(problem);
    edited_(problem);
}

void NumberEditor::take_steps(int steps)
{
    QString problem;
    try {
        panel_.set(id_, stepped_value(kind_, panel_.find(id_)->value, steps));
        show_value(panel_.find(id_)->value);
    } catch (const settings::ValueError& error) {
        problem = to_qt(std::string_view(error.what()));
    } catch (const modeler::PanelRefusal& refusal) {
        problem = to_qt(std::string_view(refusal.what()));
    }
    edited_(problem);
}

void NumberEditor::leave()
{
    if (problem_.isEmpty() && field_->text() != given_text_ &&
        !is_plain_number(from_qt(field_->text())))
        show_value(panel_.find(id_)->value);
}

void NumberEditor::mark(const QString& problem)
{
    problem_ = problem;
    // Not by colour only, and with colours of the current palette.
    QFont font = field_->font();
    font.setUnderline(!problem.isEmpty());
    field_->setFont(font);
    QPalette palette = field_->parentWidget()->palette();
    if (!problem.isEmpty())
        palette.setColor(QPalette::Text, palette.color(QPalette::LinkVisited));
    field_->setPalette(palette);
}

} // namespace desktop
