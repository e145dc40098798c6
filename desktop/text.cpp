// SPDX-License-Identifier: MIT
#include "desktop/text.h"

#include <QCoreApplication>
#include <QLocale>
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

QString number_text(std::size_t count)
{
    return QLocale().toString(static_cast<qulonglong>(count));
}

QString counted(std::size_t count, const QString& one, const QString& more)
{
    return number_text(count) + " " + (count == 1 ? one : more);
}

QString counted_points(std::size_t count)
{
    return counted(count, QCoreApplication::translate("desktop", "point"),
                   QCoreApplication::translate("desktop", "points"));
}

QString counted_polygons(std::size_t count)
{
    return counted(count, QCoreApplication::translate("desktop", "polygon"),
                   QCoreApplication::translate("desktop", "polygons"));
}

QString counted_clones(std::size_t count)
{
    return counted(count, QCoreApplication::translate("desktop", "clone"),
                   QCoreApplication::translate("desktop", "clones"));
}

QString in_menu(QString text) { return text.replace('&', "&&"); }

QString tool_tip(const QString& text)
{
    return text.isEmpty() ? QString() : "<p>" + text.toHtmlEscaped().replace('\n', "<br>") + "</p>";
}

QString without_placeholder(QString text) { return text.replace("[*]", "[*][*]"); }

} // namespace desktop
