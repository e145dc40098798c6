// SPDX-License-Identifier: MIT
#pragma once

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

} // namespace desktop
