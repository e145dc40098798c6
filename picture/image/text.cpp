// SPDX-License-Identifier: MIT
#include "picture/image/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>

#include <ft2build.h>
#include FT_FREETYPE_H

extern "C" {
extern const std::uint8_t picture_font_begin[];
extern const std::uint8_t picture_font_end[];
}

namespace picture {

namespace {

/// Number of continuation bytes after the first byte of a UTF-8 character; 0 for an invalid byte.
std::size_t following_bytes(std::uint8_t first)
{
    if (first >= 0xC2 && first < 0xE0)
        return 1;
    if (first >= 0xE0 && first < 0xF0)
        return 2;
    return first >= 0xF0 && first < 0xF5 ? 3 : 0;
}

/// Removes and returns the first character of a non-empty text.
FT_ULong next_character(std::string_view& text)
{
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(0);
    const std::size_t following = following_bytes(first);
    FT_ULong character = following == 0 ? first : first & (0x3FU >> following);
    std::size_t used = 1;
    for (; used <= following && used < text.size() && (byte(used) & 0xC0U) == 0x80; ++used)
        character = character << 6U | (byte(used) & 0x3FU);
    if (used <= following) { // cut short: Latin-1
        character = first;
        used = 1;
    }
    text.remove_prefix(used);
    return character;
}

/// Calls `visit(glyph, x)` for each glyph with its offset from the first, and returns the total
/// width.
template <typename Visit> int lay_out(FT_Face face, std::string_view text, Visit visit)
{
    int x = 0;
    while (!text.empty()) {
        if (FT_Load_Char(face, next_character(text), FT_LOAD_RENDER | FT_LOAD_NO_HINTING) != 0)
            continue;
        visit(*face->glyph, x);
        x += static_cast<int>((face->glyph->advance.x + 32) / 64);
    }
    return x;
}

void darken(std::uint8_t* pixel, std::uint8_t cover)
{
    for (int i = 0; i < 3; ++i)
        pixel[i] = static_cast<std::uint8_t>(pixel[i] * (255 - cover) / 255);
}

} // namespace

struct TextWriter::Face {
    FT_Library library = nullptr;
    FT_Face face = nullptr;

    explicit Face(double size)
    {
        if (FT_Init_FreeType(&library) != 0)
            throw std::bad_alloc();
        const auto bytes = static_cast<FT_Long>(picture_font_end - picture_font_begin);
        if (FT_New_Memory_Face(library, picture_font_begin, bytes, 0, &face) != 0 ||
            FT_Set_Char_Size(face, 0, static_cast<FT_F26Dot6>(size * 64.0), 72, 72) != 0) {
            FT_Done_FreeType(library);
            throw std::bad_alloc();
        }
    }
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;
    ~Face() { FT_Done_FreeType(library); }
};

TextWriter::TextWriter(double size) : face_(std::make_unique<Face>(size)) {}

TextWriter::~TextWriter() = default;

int TextWriter::width(std::string_view text) const
{
    return lay_out(face_->face, text, [](const FT_GlyphSlotRec_&, int) {});
}

void TextWriter::write(Image& image, int x, int baseline, std::string_view text) const
{
    lay_out(face_->face, text, [&](const FT_GlyphSlotRec_& glyph, int offset) {
        const int left = x + offset + glyph.bitmap_left;
        const int top = baseline - glyph.bitmap_top;
        const auto rows = static_cast<int>(glyph.bitmap.rows);
        const auto columns = static_cast<int>(glyph.bitmap.width);
        for (int row = std::max(0, -top); row < std::min(rows, image.height - top); ++row)
            for (int column = std::max(0, -left); column < std::min(columns, image.width - left);
                 ++column)
                darken(image.at(left + column, top + row),
                       glyph.bitmap.buffer[row * glyph.bitmap.pitch + column]);
    });
}

} // namespace picture
