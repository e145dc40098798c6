// SPDX-License-Identifier: MIT
#include "desktop/message_box.h"

#include <QLabel>
#include <QRegularExpression>

#include "desktop/text.h"

namespace desktop {

namespace {

/// The text with long words, such as names of files, cut in their middle: a box breaks no words,
/// and what does not fit on the screen would be lost.
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
    // The box sets the format of its main label alone, and makes the other one with its text.
    setInformativeText(" ");
    if (auto* const label = findChild<QLabel*>("qt_msgbox_informativelabel"))
        label->setTextFormat(Qt::PlainText);
    setInformativeText(with_short_words(more));
}

} // namespace desktop
