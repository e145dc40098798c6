// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

#include <QString>

namespace desktop {

/// Texts of ours and of modules are UTF-8; bytes that are not become replacement characters.
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

/// Text from a file, a module or a file's name, to be shown: one line, control characters and bytes
/// that are not UTF-8 made visible (`mesh::printable`).
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

/// The same line by line.
[[nodiscard]] QString printable_lines(const QString& text);

/// A number as the desktop's language writes it.
[[nodiscard]] QString number_text(std::size_t count);
/// A number of things in words: "1 point", "2,000 points".
[[nodiscard]] QString counted(std::size_t count, const QString& one, const QString& more);
[[nodiscard]] QString counted_points(std::size_t count);
[[nodiscard]] QString counted_polygons(std::size_t count);
[[nodiscard]] QString counted_clones(std::size_t count);

/// As the text of a menu entry or button, where a single & marks a key.
[[nodiscard]] QString in_menu(QString text);

/// Plain text as a tool tip that breaks its lines. Without this, a tip that looks like HTML is
/// taken as such.
[[nodiscard]] QString tool_tip(const QString& text);

/// Text for a window's title: no part of it is taken for the mark of changes, "[*]".
[[nodiscard]] QString without_placeholder(QString text);

} // namespace desktop
