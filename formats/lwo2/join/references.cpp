// SPDX-License-Identifier: MIT
#include "formats/lwo2/join/references.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/read/chunk_source.h"
#include "formats/lwo2/read/cursor.h"

namespace formats::lwo2 {

namespace {

/// The layout of one kind of sub-chunk as a pattern with one character per field: a digit n skips
/// 2n bytes; `e` is an envelope and `i` an image, both encoded as index; `I` is an image as a plain
/// number; `s` skips a string; `n` are nested sub-chunks up to the end.
struct Pattern {
    FourCC id;
    std::string_view fields;
};

constexpr std::array patterns{
    Pattern{fourcc("COLR"), "6e"}, //
    Pattern{fourcc("DIFF"), "2e"},
    Pattern{fourcc("LUMI"), "2e"},
    Pattern{fourcc("SPEC"), "2e"},
    Pattern{fourcc("REFL"), "2e"},
    Pattern{fourcc("TRAN"), "2e"},
    Pattern{fourcc("TRNL"), "2e"},
    Pattern{fourcc("GLOS"), "2e"},
    Pattern{fourcc("SHRP"), "2e"},
    Pattern{fourcc("BUMP"), "2e"},
    Pattern{fourcc("RIND"), "2e"},
    Pattern{fourcc("RSAN"), "2e"},
    Pattern{fourcc("RBLR"), "2e"},
    Pattern{fourcc("TBLR"), "2e"},
    Pattern{fourcc("CLRH"), "2e"},
    Pattern{fourcc("CLRF"), "2e"},
    Pattern{fourcc("ADTR"), "2e"},
    Pattern{fourcc("GVAL"), "2e"},
    Pattern{fourcc("VCOL"), "2e"},
    Pattern{fourcc("GLOW"), "12e2e"},
    Pattern{fourcc("LINE"), "12e6e"},
    Pattern{fourcc("RIMG"), "i"},
    Pattern{fourcc("TIMG"), "i"},
    // a texture layer and its sub-chunks
    Pattern{fourcc("BLOK"), "n"},
    Pattern{fourcc("IMAP"), "sn"},
    Pattern{fourcc("PROC"), "sn"},
    Pattern{fourcc("GRAD"), "sn"},
    Pattern{fourcc("SHDR"), "sn"},
    Pattern{fourcc("OPAC"), "12e"},
    Pattern{fourcc("TMAP"), "n"},
    Pattern{fourcc("CNTR"), "6e"},
    Pattern{fourcc("SIZE"), "6e"},
    Pattern{fourcc("ROTA"), "6e"},
    Pattern{fourcc("FALL"), "16e"},
    Pattern{fourcc("IMAG"), "i"},
    Pattern{fourcc("WRPW"), "2e"},
    Pattern{fourcc("WRPH"), "2e"},
    Pattern{fourcc("TAMP"), "2e"},
};

constexpr FourCC image_of_image = fourcc("XREF");

constexpr std::array image_patterns{
    Pattern{fourcc("CONT"), "2e"}, //
    Pattern{fourcc("BRIT"), "2e"}, //
    Pattern{fourcc("SATR"), "2e"}, //
    Pattern{fourcc("HUE "), "2e"}, //
    Pattern{fourcc("GAMM"), "2e"}, //
    Pattern{image_of_image, "I"},
};

void put_u2(Bytes& out, std::size_t value)
{
    out.push_back(static_cast<std::byte>(value >> 8u));
    out.push_back(static_cast<std::byte>(value));
}

void put_u4(Bytes& out, std::uint32_t value)
{
    put_u2(out, value >> 16u);
    put_u2(out, value & 0xFFFFu);
}

void put_bytes(Bytes& out, std::span<const std::byte> bytes)
{
    out.insert(out.end(), bytes.begin(), bytes.end());
}

void put_text(Bytes& out, std::string_view text)
{
    put_bytes(out, std::as_bytes(std::span(text)));
    out.push_back(std::byte{0});
    if (text.size() % 2 == 0)
        out.push_back(std::byte{0});
}

constexpr std::size_t sub_header_size = 6;

std::size_t sub_size(std::span<const std::byte> at)
{
    return std::to_integer<std::size_t>(at[4]) << 8u | std::to_integer<std::size_t>(at[5]);
}

FourCC sub_id(std::span<const std::byte> at)
{
    FourCC id = 0;
    for (std::size_t i = 0; i < 4; ++i)
        id = id << 8u | std::to_integer<FourCC>(at[i]);
    return id;
}

/// Size of the index at the front; 0 if it is truncated.
std::size_t index_width(std::span<const std::byte> at)
{
    if (at.size() < 2)
        return 0;
    if (at[0] != std::byte{0xFF})
        return 2;
    return at.size() < 4 ? 0 : 4;
}

/// Copies sequences of sub-chunks and replaces the numbers in them.
class Rewriter {
public:
    Rewriter(std::span<const Pattern> known, const Renumber& renumber)
        : known_(known), renumber_(renumber)
    {}

    void sub_chunks(std::span<const std::byte> from, Bytes& out, int depth = 0) const
    {
        constexpr int deepest = 8; // sound surfaces go three deep; damaged ones may go on for long
        while (from.size() >= sub_header_size && depth < deepest) {
            const std::size_t size = sub_size(from);
            if (size > from.size() - sub_header_size)
                break;
            const FourCC id = sub_id(from);
            put_u4(out, id);
            const std::size_t size_at = out.size();
            put_u2(out, 0);
            body(id, from.subspan(sub_header_size, size), out, depth);
            const std::size_t written = out.size() - size_at - 2;
            if (written > 0xFFFF)
                throw LimitError(fmt::format("surface part {} would take {} bytes, more than the "
                                             "65535 that LWO2 can hold; simplify the surface",
                                             mesh::to_text(id), written));
            out[size_at] = static_cast<std::byte>(written >> 8u);
            out[size_at + 1] = static_cast<std::byte>(written);
            from = from.subspan(sub_header_size + size);
            if (size % 2 != 0 && !from.empty()) {
                out.push_back(from.front());
                from = from.subspan(1);
            }
        }
        put_bytes(out, from);
    }

private:
    void body(FourCC id, std::span<const std::byte> from, Bytes& out, int depth) const
    {
        const auto pattern = std::find_if(known_.begin(), known_.end(),
                                          [id](const Pattern& known) { return known.id == id; });
        if (pattern != known_.end())
            for (const char kind : pattern->fields)
                if (!field(kind, from, out, depth))
                    break;
        put_bytes(out, from);
    }

    /// Copies one field; false if it is truncated or, as an optional last field, missing.
    bool field(char kind, std::span<const std::byte>& from, Bytes& out, int depth) const
    {
        std::size_t taken = 0;
        switch (kind) {
        case 'n':
            sub_chunks(from, out, depth + 1);
            from = {};
            return true;
        case 's':
            taken = text_size(from);
            break;
        case 'e':
        case 'i':
            return index(kind == 'e' ? renumber_.envelope : renumber_.image, from, out);
        case 'I':
            return number(from, out);
        default:
            taken = static_cast<std::size_t>(kind - '0') * 2;
            if (taken > from.size())
                taken = 0;
            break;
        }
        put_bytes(out, from.first(taken));
        from = from.subspan(taken);
        return taken > 0;
    }

    static std::size_t text_size(std::span<const std::byte> from)
    {
        const auto zero = std::find(from.begin(), from.end(), std::byte{0});
        if (zero == from.end())
            return 0;
        const auto with_zero = static_cast<std::size_t>(zero - from.begin()) + 1;
        return std::min(from.size(), with_zero + with_zero % 2);
    }

    static bool index(const std::function<std::uint32_t(std::uint32_t)>& replace,
                      std::span<const std::byte>& from, Bytes& out)
    {
        const std::size_t width = index_width(from);
        if (width == 0)
            return false;
        std::uint32_t value = 0;
        for (const std::byte byte : from.first(width))
            value = value << 8u | std::to_integer<std::uint32_t>(byte);
        value &= 0x00FFFFFFu;
        if (value != 0)
            value = replace(value);
        // keep the long form, so that an unchanged chunk stays byte-identical
        if (width == 2 && value < first_long_index)
            put_u2(out, value);
        else
            put_u4(out, 0xFF000000u | value);
        from = from.subspan(width);
        return true;
    }

    bool number(std::span<const std::byte>& from, Bytes& out) const
    {
        if (from.size() < 4)
            return false;
        const std::uint32_t value = sub_id(from);
        put_u4(out, value == 0 ? 0 : renumber_.image(value));
        from = from.subspan(4);
        return true;
    }

    std::span<const Pattern> known_;
    const Renumber& renumber_;
};

bool has_sub_chunk(std::span<const std::byte> at, FourCC wanted)
{
    while (at.size() >= sub_header_size) {
        if (sub_id(at) == wanted)
            return true;
        const std::size_t size = sub_size(at);
        at = at.subspan(std::min(at.size(), sub_header_size + size + size % 2));
    }
    return false;
}

} // namespace

std::optional<SurfaceHead> surface_head(std::span<const std::byte> body)
{
    try {
        const auto source = memory_source(body);
        Cursor cursor(id_surf, *source, 0, body.size());
        SurfaceHead head;
        head.name = cursor.text();
        head.source = cursor.text();
        head.rest = body.subspan(static_cast<std::size_t>(cursor.offset()));
        return head;
    } catch (const FormatError&) {
        return std::nullopt;
    }
}

bool has_node_data(std::span<const std::byte> rest) { return has_sub_chunk(rest, fourcc("NODS")); }

Bytes renumber_surface(std::span<const std::byte> rest, const Renumber& renumber)
{
    Bytes out;
    out.reserve(rest.size());
    Rewriter(patterns, renumber).sub_chunks(rest, out);
    return out;
}

mesh::FileChunk make_surface(const SurfaceHead& head)
{
    mesh::FileChunk chunk{.id = id_surf};
    put_text(chunk.body, head.name);
    put_text(chunk.body, head.source);
    put_bytes(chunk.body, head.rest);
    return chunk;
}

std::optional<Numbered> numbered(const mesh::FileChunk& chunk)
{
    const std::span<const std::byte> body(chunk.body);
    const std::size_t width = chunk.id == id_clip ? 4 : index_width(body);
    if (width == 0 || body.size() < width)
        return std::nullopt;
    Numbered result{0, body.subspan(width)};
    for (const std::byte byte : body.first(width))
        result.number = result.number << 8u | std::to_integer<std::uint32_t>(byte);
    if (chunk.id != id_clip)
        result.number &= 0x00FFFFFFu;
    return result;
}

Bytes renumber_image(std::span<const std::byte> rest, const Renumber& renumber)
{
    Bytes out;
    out.reserve(rest.size());
    Rewriter(image_patterns, renumber).sub_chunks(rest, out);
    return out;
}

bool names_image(std::span<const std::byte> rest) { return has_sub_chunk(rest, image_of_image); }

mesh::FileChunk make_numbered(mesh::FourCC id, std::uint32_t number,
                              std::span<const std::byte> rest)
{
    mesh::FileChunk chunk{.id = id};
    if (id == id_clip)
        put_u4(chunk.body, number);
    else if (number < first_long_index)
        put_u2(chunk.body, number);
    else
        put_u4(chunk.body, 0xFF000000u | number);
    put_bytes(chunk.body, rest);
    return chunk;
}

} // namespace formats::lwo2
