// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace desktop {

/// A message box that shows its texts as they are, never as HTML, so that names from files can be
/// in them; control characters within their lines are made visible. The texts can be copied. Very
/// long words are cut in their middle, and the whole texts are among the box's details then.
class MessageBox : public QMessageBox {
    Q_OBJECT

public:
    MessageBox(Icon icon, const QString& title, const QString& text, const QString& informative,
               StandardButtons buttons, QWidget* parent);
};

} // namespace desktop
