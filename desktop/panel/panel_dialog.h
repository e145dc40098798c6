// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "modeler/form_panel.h"

class QLabel;
class QVBoxLayout;

namespace desktop {

class FormView;

/// The window of a form panel: the module's form, a line for what there is to tell, room for the
/// host's own strip, OK and Cancel. Enter is OK, Escape is Cancel.
class PanelDialog : public QDialog {
public:
    /// The panel is used as long as the dialog lives.
    PanelDialog(modeler::FormPanel& panel, QWidget* parent);

    [[nodiscard]] FormView& form() noexcept { return *form_; }

    /// Puts the host's own strip below the form. Takes the widget over.
    void add_strip(QWidget* strip);

    /// Shows a sentence; an empty one takes the last away.
    void tell(const QString& sentence);
    [[nodiscard]] QString told() const;

    /// Closes with OK, unless a field holds what is no value.
    void accept() override;

private:
    FormView* form_;
    QVBoxLayout* column_;
    QLabel* line_;
};

} // namespace desktop
