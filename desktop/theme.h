// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

#include "picture/render/backdrop.h"

namespace desktop {

/// Contrast ratio of two opaque colours, 1 to 21, as defined by WCAG 2.1.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// Minimum contrast ratio of readable text.
inline constexpr double readable_contrast = 4.5;

/// Adjusts a palette so that disabled text and placeholders are readable on windows, fields and
/// buttons, in a grey between the text and background colours; also adjusts the background of
/// disabled selected text.
[[nodiscard]] QPalette with_readable_grey(QPalette palette);

/// The background of the viewport: light in a light theme, dark in a dark one.
[[nodiscard]] picture::Backdrop backdrop_for(const QPalette& palette);

} // namespace desktop
