// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace desktop {

/// A message box for texts that may contain names from files: shows plain text, never HTML, with
/// control characters escaped, and allows copying it. Very long words are elided in the middle; the
/// full text is then in the details.
class MessageBox : public QMessageBox {
    Q_OBJECT

public:
    MessageBox(Icon icon, const QString& title, const QString& text, const QString& informative,
               StandardButtons buttons, QWidget* parent);
};

} // namespace desktop
