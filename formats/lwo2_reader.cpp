// SPDX-License-Identifier: MIT
#include "formats/lwo2_reader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/file_kind.h"
#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/read/chunk_source.h"
#include "formats/lwo2/read/cursor.h"
#include "formats/lwo2/read/layer_reader.h"
#include "formats/lwo2/read/reading.h"
#include "mesh/plural.h"

namespace formats {

namespace {

using namespace lwo2;
using mesh::ChunkRole;
using mesh::FileChunk;

constexpr std::uint64_t header_size = 8; // of a chunk: its four characters and its size
constexpr std::uint64_t form_start = 12; // the first chunk, after the file's own header

class Reader {
public:
    Reader(ChunkSource& source, const WarningSink& warnings) : source_(source), reading_(warnings)
    {}

    mesh::Document read();

private:
    std::uint64_t read_form_header();
    void read_chunk(Cursor& body, std::byte pad);
    void read_tags(Cursor& body);
    void keep(FileChunk chunk);
    void close_layer();
    void move_tail();

    ChunkSource& source_;
    Reading reading_;
    mesh::Document document_;
    std::optional<LayerReader> layer_;
    LayerReader::HighestTag highest_tag_;
    bool has_tags_ = false;
};

/// Checks the file header and returns the end offset of the content. It may be one past the end of
/// the file if the last padding byte is missing.
std::uint64_t Reader::read_form_header()
{
    const std::uint64_t size = source_.size();
    const auto looked_at = static_cast<std::size_t>(std::min<std::uint64_t>(size, kind_bytes));
    const auto begin = source_.read(0, looked_at).first(looked_at);
    if (const std::string kind = foreign_kind(begin, size); !kind.empty())
        throw FormatError(kind);
    const std::uint64_t end = header_size + read_u4(begin.data() + 4);
    if (end < form_start)
        throw FormatError("FORM", 4, "the size is too small for any content; the file is damaged");
    if (end > size + 1)
        throw FormatError(
            "FORM", 4,
            fmt::format("the file should have {} bytes and has {}; it is cut short", end, size));
    if (end < size)
        reading_.warn(id_form, end,
                      "the file goes on after the end of the object, which is left out");
    return end;
}

mesh::Document Reader::read()
{
    const std::uint64_t stated_end = read_form_header();
    const std::uint64_t end = std::min(stated_end, source_.size());
    std::uint64_t at = form_start;
    bool pad_missing = false;
    while (at < end) {
        if (end - at < header_size)
            throw FormatError("FORM", at,
                              fmt::format("{} {} left, too few for a chunk; the file is "
                                          "damaged or cut short",
                                          mesh::counted(end - at, "byte"),
                                          end - at == 1 ? "is" : "are"));
        Cursor header(id_form, source_, at, header_size);
        const FourCC id = header.u4();
        const std::uint64_t size = header.u4();
        const std::uint64_t body = at + header_size;
        if (size > end - body)
            throw FormatError(mesh::to_text(id), at,
                              fmt::format("its size of {} runs past the end of the object, "
                                          "{} on; the file is damaged or cut short",
                                          mesh::counted(size, "byte"),
                                          mesh::counted(end - body, "byte")));
        at = body + size;
        const bool padded = size % 2 != 0;
        pad_missing = padded && at == end;
        std::byte pad{0};
        if (padded && at < end)
            pad = source_.read(at++, 1).front();
        Cursor cursor(id, source_, body, size);
        read_chunk(cursor, pad);
    }
    if (stated_end > end && !pad_missing)
        throw FormatError("FORM", 4,
                          fmt::format("the file should have {} bytes and has {}; it is cut short",
                                      stated_end, end));
    close_layer();
    move_tail();
    if (highest_tag_.any && highest_tag_.tag >= document_.tags.size())
        throw FormatError("PTAG", highest_tag_.offset,
                          fmt::format("index {} names no tag ({}); the file is damaged",
                                      highest_tag_.tag,
                                      mesh::counted(document_.tags.size(), "tag")));
    document_.file_tags = document_.tags.size();
    return std::move(document_);
}

void Reader::read_chunk(Cursor& body, std::byte pad)
{
    const FourCC id = body.chunk();
    if (id == id_layr) {
        close_layer();
        layer_.emplace(reading_);
        layer_->open(body);
        return;
    }
    if (id == id_tags) {
        read_tags(body);
        return;
    }
    const bool opens_default = id == id_pnts || id == id_bbox || id == id_pols || id == id_ptag ||
                               id == id_vmap || id == id_vmad || id == id_vmpa;
    if (!layer_ && opens_default) {
        reading_.warn(id, body.offset() - header_size,
                      "it stands before any layer; a layer without name holds it");
        layer_.emplace(reading_);
    }
    if (layer_ && layer_->take(body))
        return;
    keep({.id = id, .pad = pad, .body = body.rest()});
}

void Reader::read_tags(Cursor& body)
{
    if (has_tags_) {
        reading_.warn(id_tags, body.offset() - header_size,
                      "there are several lists of tags; the last one counts");
        document_.tags = mesh::TagList();
    } else {
        keep({.id = id_tags, .role = ChunkRole::tags});
    }
    has_tags_ = true;
    const std::uint64_t start = body.offset() - header_size;
    std::size_t left_out = 0;
    while (body.remaining() > 0) {
        std::string text = body.text();
        if (document_.tags.size() < tag_limit)
            document_.tags.append(std::move(text));
        else
            ++left_out;
    }
    if (left_out > 0)
        reading_.warn(id_tags, start,
                      fmt::format("{} behind the {} that polygons can name {} left out",
                                  mesh::counted(left_out, "tag"), tag_limit,
                                  left_out == 1 ? "is" : "are"));
}

void Reader::keep(FileChunk chunk)
{
    if (layer_)
        layer_->keep(std::move(chunk));
    else
        document_.head.push_back(std::move(chunk));
}

void Reader::close_layer()
{
    if (!layer_)
        return;
    const auto& highest = layer_->highest_tag();
    if (highest.any && (!highest_tag_.any || highest.tag > highest_tag_.tag))
        highest_tag_ = highest;
    document_.layers.push_back(layer_->finish());
    layer_.reset();
}

/// Moves trailing chunks that apply to the whole file, and chunks between them, from the last layer
/// to the document.
void Reader::move_tail()
{
    if (document_.layers.empty())
        return;
    auto& chunks = document_.layers.back().chunks;
    auto first = chunks.end();
    for (auto it = chunks.end(); it != chunks.begin();) {
        --it;
        if (it->role != ChunkRole::opaque && it->role != ChunkRole::tags)
            break;
        if (is_of_whole_file(it->id))
            first = it;
    }
    document_.tail.assign(std::make_move_iterator(first), std::make_move_iterator(chunks.end()));
    chunks.erase(first, chunks.end());
}

} // namespace

mesh::Document read_lwo2(std::span<const std::byte> bytes, const WarningSink& warnings)
{
    const auto source = memory_source(bytes);
    return Reader(*source, warnings).read();
}

mesh::Document read_lwo2_file(InputFile file, const WarningSink& warnings)
{
    const std::filesystem::path name = file.name;
    const auto source = file_source(std::move(file));
    try {
        return Reader(*source, warnings).read();
    } catch (const FormatError& fault) {
        throw FormatError(name, fault);
    }
}

mesh::Document read_lwo2_file(const std::filesystem::path& path, const WarningSink& warnings)
{
    return read_lwo2_file(open_input(path), warnings);
}

} // namespace formats
