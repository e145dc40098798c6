// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "desktop/panel/control_editor.h"

namespace desktop {

class NumberField;

/// Editor of a number. Invalid text stays in the field, marked, until it is corrected. An
/// expression is replaced by its result when the field loses focus.
class NumberEditor : public ControlEditor {
public:
    NumberEditor(modeler::FormPanel& panel, const modeler::Control& control, Edited edited,
                 QWidget* parent);

    [[nodiscard]] QWidget* widget() const override;
    void refresh(bool keep_typed) override;
    [[nodiscard]] QString problem() const override { return problem_; }

private:
    void take_text(const QString& text);
    void take_steps(int steps);
    void leave();
    void show_value(const modeler::ControlValue& value);
    void mark(const QString& problem);

    modeler::FormPanel& panel_;
    modeler::ControlId id_;
    modeler::ControlKind kind_;
    Edited edited_;
    NumberField* field_;
    std::optional<modeler::ControlValue> shown_; ///< the value displayed in the field
    modeler::ControlValue given_;                ///< the value before the user started typing
    QString given_text_;
    QString problem_;
};

} // namespace desktop
