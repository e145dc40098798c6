// SPDX-License-Identifier: MIT
#include "desktop/message_box.h"

#include <QLabel>

#include "desktop/text.h"

namespace desktop {

MessageBox::MessageBox(Icon icon, const QString& title, const QString& text,
                       const QString& informative, StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, printable(title), {}, buttons, parent)
{
    setTextFormat(Qt::PlainText);
    setText(printable_lines(text));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (informative.isEmpty())
        return;
    // The box sets the format of its main label alone, and makes the other one with its text.
    setInformativeText(" ");
    if (auto* const label = findChild<QLabel*>("qt_msgbox_informativelabel"))
        label->setTextFormat(Qt::PlainText);
    setInformativeText(printable_lines(informative));
}

} // namespace desktop
