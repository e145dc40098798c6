// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

#include "picture/render/backdrop.h"

namespace desktop {

/// The ratio of the luminances of two opaque colours, 1 to 21, as WCAG 2.1 defines it.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);

/// Text with less contrast than this is hard to read.
inline constexpr double readable_contrast = 4.5;

/// The palette with a grey for disabled text and placeholders that is between the colours of text
/// and background, and can be read on windows, fields and buttons alike; and with a background of
/// disabled selected text on which that can be read.
[[nodiscard]] QPalette with_readable_grey(QPalette palette);

/// What the view shows where nothing is: light in a light theme, dark in a dark one.
[[nodiscard]] picture::Backdrop backdrop_for(const QPalette& palette);

} // namespace desktop
