// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include <QDialog>

#include "modeler/form_panel.h"

class QLabel;
class QVBoxLayout;

namespace desktop {

class FormView;

/// A form panel as it is answered: the module's form, which scrolls where there is little room, a
/// line for what there is to tell, room for the host's own strip, OK and Cancel. Enter is OK,
/// except that it ends the typing in a field first; Ctrl+Enter is always OK; Escape is Cancel.
/// Stands in a dock, or is a window of its own.
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

    /// What is asked before OK closes the panel: a sentence that says what speaks against it, which
    /// is then shown; or an empty one.
    void set_check(std::function<QString()> check) { check_ = std::move(check); }

    /// Closes with OK, unless a field holds what is no value, or the check says no.
    void accept() override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QWidget* content_; ///< what scrolls
    FormView* form_;
    QVBoxLayout* column_;
    QLabel* line_;
    QWidget* strip_ = nullptr;
    std::function<QString()> check_;
};

} // namespace desktop
