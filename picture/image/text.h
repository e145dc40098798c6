// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "picture/image/image.h"

namespace picture {

/// Writes into pictures, in a font that is part of the program: the same letters everywhere.
class TextWriter {
public:
    /// `size` is the height of a line in pixels, about. @throws std::bad_alloc
    explicit TextWriter(double size);
    TextWriter(const TextWriter&) = delete;
    TextWriter& operator=(const TextWriter&) = delete;
    ~TextWriter();

    /// How many pixels the text is wide.
    [[nodiscard]] int width(std::string_view text) const;

    /// Writes in black, from `x` on, the letters standing on row `baseline`. What lies outside the
    /// picture is cut off. The text is UTF-8; bytes that are not are taken for Latin-1.
    void write(Image& image, int x, int baseline, std::string_view text) const;

private:
    struct Face;
    std::unique_ptr<Face> face_;
};

} // namespace picture
