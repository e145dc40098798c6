// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "desktop/panel/control_editor.h"

namespace desktop {

class NumberField;

/// A field for a number. Wrong text stays in it, marked, until it is put right; a calculation gives
/// way to its result when the field is left.
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
    std::optional<modeler::ControlValue> shown_; ///< the value whose text stands in the field
    modeler::ControlValue given_;                ///< what stood there before anything was typed
    QString given_text_;
    QString problem_;
};

} // namespace desktop
