// SPDX-License-Identifier: MIT
#include "desktop/message_box.h"

#include <QLabel>
#include <QRegularExpression>

#include "desktop/text.h"

namespace desktop {

namespace {

/// Elides long words, such as file names, in the middle: a message box does not break words and
/// could become wider than the screen.
QString with_short_words(const QString& text)
{
    constexpr qsizetype longest = 64;
    static const QRegularExpression long_word(QString("\\S{%1,}").arg(longest + 1));
    QString result;
    qsizetype done = 0;
    for (auto found = long_word.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch word = found.next();
        result += text.mid(done, word.capturedStart() - done) + word.captured().left(longest / 2) +
                  QChar(0x2026) + word.captured().right(longest / 2 - 1);
        done = word.capturedEnd();
    }
    return result + text.mid(done);
}

} // namespace

MessageBox::MessageBox(Icon icon, const QString& title, const QString& text,
                       const QString& informative, StandardButtons buttons, QWidget* parent)
    : QMessageBox(icon, printable(title), {}, buttons, parent)
{
    setTextFormat(Qt::PlainText);
    const QString full = printable_lines(text);
    const QString more = printable_lines(informative);
    setText(with_short_words(full));
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    if (with_short_words(full) != full || with_short_words(more) != more)
        setDetailedText(more.isEmpty() ? full : full + "\n\n" + more);
    if (informative.isEmpty())
        return;
    // QMessageBox sets the format of its main label only; set the informative label's here.
    setInformativeText(" ");
    if (auto* const label = findChild<QLabel*>("qt_msgbox_informativelabel"))
        label->setTextFormat(Qt::PlainText);
    setInformativeText(with_short_words(more));
}

} // namespace desktop
