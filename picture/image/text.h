// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "picture/image/image.h"

namespace picture {

/// Draws text into images with a built-in font, so the result is the same on every system.
class TextWriter {
public:
    /// @param size  approximate line height in pixels
    /// @throws std::bad_alloc
    explicit TextWriter(double size);
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;
    ~TextWriter();

    /// Width of the text in pixels.
    [[nodiscard]] int width(std::string_view text) const;

    /// Draws black text with its left edge at `x` and its baseline at row `baseline`, clipped to
    /// the image. The text is UTF-8; invalid bytes are interpreted as Latin-1.
    void write(Image& image, int x, int baseline, std::string_view text) const;

private:
    struct Face;
    std::unique_ptr<Face> face_;
};

} // namespace picture
