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

/// The dialog of a form panel: the scrollable form, a message line, a strip of the host, OK and
/// Cancel. Enter is OK, but first ends the input in a field; Ctrl+Enter is always OK; Escape is
/// Cancel. Shown in a dock or as a window.
class PanelDialog : public QDialog {
public:
    /// The panel must outlive the dialog.
    PanelDialog(modeler::FormPanel& panel, QWidget* parent);

    [[nodiscard]] FormView& form() noexcept { return *form_; }

    /// Adds the host's strip below the form. Takes ownership.
    void add_strip(QWidget* strip);

    /// Shows a message; an empty one clears it.
    void show_message(const QString& sentence);
    [[nodiscard]] QString message() const;

    /// Sets the check before OK closes the panel. It returns a message, which is shown, or an empty
    /// string to accept.
    void set_check(std::function<QString()> check) { check_ = std::move(check); }

    /// Closes with OK unless a field has invalid text or the check fails.
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
