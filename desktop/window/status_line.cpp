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

void StatusLine::tell(const QString& text)
{
    told_ = text;
    setToolTip(tool_tip(text));
    setAccessibleName(text);
    show_told();
}

QSize StatusLine::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void StatusLine::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    show_told();
}

void StatusLine::show_told()
{
    setText(fontMetrics().elidedText(told_, Qt::ElideRight, contentsRect().width()));
}

} // namespace desktop
