// SPDX-License-Identifier: MIT
#include "desktop/text.h"

#include <QStringList>

#include "mesh/printable.h"

namespace desktop {

QString printable(std::string_view text) { return to_qt(std::string_view(mesh::printable(text))); }

QString printable_lines(const QString& text)
{
    QStringList lines = text.split('\n');
    for (QString& line : lines)
        line = printable(line);
    return lines.join('\n');
}

QString in_menu(QString text) { return text.replace('&', "&&"); }

QString tool_tip(const QString& text)
{
    return text.isEmpty() ? QString() : "<p>" + text.toHtmlEscaped().replace('\n', "<br>") + "</p>";
}

QString without_placeholder(QString text) { return text.replace("[*]", "[*][*]"); }

} // namespace desktop
