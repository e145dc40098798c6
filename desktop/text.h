// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include <QString>

namespace desktop {

/// Converts UTF-8; invalid bytes become replacement characters.
[[nodiscard]] inline QString to_qt(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline std::string from_qt(const QString& text) { return text.toStdString(); }

[[nodiscard]] inline QString to_qt(const std::filesystem::path& path)
{
    return to_qt(std::string_view(path.native()));
}

[[nodiscard]] inline std::filesystem::path to_path(const QString& text) { return from_qt(text); }

/// Untrusted text escaped for display as one line (see mesh::printable).
[[nodiscard]] QString printable(std::string_view text);
[[nodiscard]] inline QString printable(const char* text)
{
    return printable(std::string_view(text));
}
[[nodiscard]] inline QString printable(const std::string& text)
{
    return printable(std::string_view(text));
}
[[nodiscard]] inline QString printable(const QString& text) { return printable(from_qt(text)); }
[[nodiscard]] inline QString printable(const std::filesystem::path& path)
{
    return printable(path.native());
}

/// Escapes each line of a text; keeps the line breaks.
[[nodiscard]] QString printable_lines(const QString& text);

/// Formats a number in the locale of the desktop.
[[nodiscard]] QString number_text(std::size_t count);
/// Formats a number with its noun: "1 point", "2,000 points".
[[nodiscard]] QString counted(std::size_t count, const QString& one, const QString& more);
[[nodiscard]] QString counted_points(std::size_t count);
[[nodiscard]] QString counted_polygons(std::size_t count);
[[nodiscard]] QString counted_clones(std::size_t count);

/// Escapes & for the text of a menu entry or button.
[[nodiscard]] QString in_menu(QString text);

/// Formats plain text as a word-wrapped tool tip. Qt would interpret a text that looks like HTML.
[[nodiscard]] QString tool_tip(const QString& text);

/// Escapes the placeholder "[*]" for a window title.
[[nodiscard]] QString without_placeholder(QString text);

} // namespace desktop
