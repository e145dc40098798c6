// SPDX-License-Identifier: MIT
#include "desktop/window/status_line.h"

#include "desktop/text.h"

namespace desktop {

StatusLine::StatusLine(QWidget* parent) : QLabel(parent)
{
    setObjectName("status");
    setTextFormat(Qt::PlainText); // names of files and layers are in it
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void StatusLine::show_message(const QString& text)
{
    message_ = text;
    setToolTip(tool_tip(text));
    setAccessibleName(text);
    show_elided();
}

QSize StatusLine::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void StatusLine::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    show_elided();
}

void StatusLine::show_elided()
{
    setText(fontMetrics().elidedText(message_, Qt::ElideRight, contentsRect().width()));
}

} // namespace desktop
