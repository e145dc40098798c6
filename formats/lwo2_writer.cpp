// SPDX-License-Identifier: MIT
#include "formats/lwo2_writer.h"

#include <algorithm>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>

#include "formats/file_writer.h"
#include "formats/lwo2/chunks.h"
#include "formats/lwo2/divide/division.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/write/bodies.h"
#include "formats/lwo2/write/encoder.h"
#include "formats/lwo2/write/layout.h"
#include "formats/lwo2/write/limits.h"
#include "formats/lwo2/write/writer.h"

namespace formats {

namespace {

using namespace lwo2;
using mesh::ChunkRole;
using mesh::FileChunk;

constexpr std::uint64_t header_size = 8;

std::uint64_t padded(std::uint64_t size) { return size + size % 2; }

/// The zero-terminated name at the start of a surface description.
std::string_view surface_name(const FileChunk& chunk)
{
    const std::string_view text(reinterpret_cast<const char*>(chunk.body.data()),
                                chunk.body.size());
    return text.substr(0, text.find('\0'));
}

/// The plan of a file: all chunks in order with their sizes. Limits are checked before the first
/// byte is written.
class Plan {
public:
    Plan(const mesh::Document& document, const Limits& limits);

    [[nodiscard]] std::uint64_t file_size() const noexcept { return header_size + form_size_; }
    void warn_of_outgrown_chunks(const WarningSink& warnings) const;
    void write(ByteSink& sink) const;

private:
    struct Part {
        BodySource source;
        std::vector<Step> own_steps; ///< of what stands outside the layers
        [[nodiscard]] const std::vector<Step>& steps() const
        {
            return source.layout != nullptr ? source.layout->steps() : own_steps;
        }
    };

    void add_outer(const std::vector<FileChunk>& chunks, bool with_tags);
    void add_layers();
    void add_layer(const std::string& title);
    void find_plain_surfaces();
    void measure(const Part& part, const std::string& title);

    const mesh::Document& document_;
    Limits limits_;
    std::deque<Layout> layouts_; ///< the parts point into it
    std::vector<Part> parts_;
    std::vector<std::uint64_t> sizes_; ///< of the bodies of all steps, in order
    std::vector<std::string> plain_surfaces_;
    std::uint64_t form_size_ = 4;
};

Plan::Plan(const mesh::Document& document, const Limits& limits)
    : document_(document), limits_(limits)
{
    check_contents(document);
    bool has_tags = false;
    for_each_chunk(document,
                   [&](const FileChunk& chunk) { has_tags |= chunk.role == ChunkRole::tags; });
    add_outer(document.head, !has_tags && document.tags.size() > 0);
    add_layers();
    add_outer(document.tail, false);
    find_plain_surfaces();
    check_file_size(form_size_, limits_);
}

void Plan::add_outer(const std::vector<FileChunk>& chunks, bool with_tags)
{
    Part part{{document_}, {}};
    if (with_tags)
        part.own_steps.push_back({.role = ChunkRole::tags});
    for (const FileChunk& chunk : chunks)
        part.own_steps.push_back({.role = chunk.role, .chunk = &chunk});
    measure(part, "document");
    parts_.push_back(std::move(part));
}

void Plan::add_layers()
{
    bool map_parameters = false;
    for_each_chunk(document_,
                   [&](const FileChunk& chunk) { map_parameters |= chunk.id == id_vmpa; });
    PartNames names(document_);
    for (std::size_t i = 0; i < document_.layers.size(); ++i) {
        const std::string title = layer_title(document_, i);
        layouts_.emplace_back(whole(document_.layers[i]), map_parameters);
        if (layouts_.back().largest_block() <= limits_.layer) {
            add_layer(title);
            continue;
        }
        auto parts = divide(layouts_.back(), limits_.layer, title);
        layouts_.pop_back();
        names.name(parts, title);
        for (LayerPart& part : parts) {
            layouts_.emplace_back(std::move(part), map_parameters);
            add_layer(title);
        }
    }
}

/// Adds the layer of the last layout.
void Plan::add_layer(const std::string& title)
{
    const Layout& layout = layouts_.back();
    check_blocks(layout, limits_, title);
    Part part{{document_, layout.part().layer, &layout}, {}};
    measure(part, title);
    parts_.push_back(std::move(part));
}

void Plan::measure(const Part& part, const std::string& title)
{
    for (const Step& step : part.steps()) {
        const std::uint64_t size = body_size(part.source, step);
        check_chunk_size(size, step_id(step), title);
        sizes_.push_back(size);
        form_size_ += header_size + padded(size);
    }
}

/// Used surfaces without a description, except those that were already undescribed in the file.
void Plan::find_plain_surfaces()
{
    std::vector<std::uint8_t> used(document_.tags.size(), 0);
    for (const mesh::Layer& layer : document_.layers)
        for (std::size_t p = 0; p < layer.polygons.size(); ++p)
            if (const mesh::TagIndex tag = layer.polygons.surface(p); tag != mesh::no_tag)
                used[tag] = 1;
    std::unordered_set<std::string_view> described;
    for_each_chunk(document_, [&](const FileChunk& chunk) {
        if (chunk.id == id_surf)
            described.insert(surface_name(chunk));
    });
    for (std::size_t i = document_.file_tags; i < used.size(); ++i) {
        const std::string& name = document_.tags[static_cast<mesh::TagIndex>(i)];
        if (used[i] == 0 || !described.insert(name).second)
            continue;
        plain_surfaces_.push_back(name);
        const std::uint64_t size = plain_surface_size(name);
        check_chunk_size(size, id_surf, "document");
        form_size_ += header_size + size;
    }
}

void Plan::warn_of_outgrown_chunks(const WarningSink& warnings) const
{
    if (!warnings)
        return;
    std::size_t layer = 0;
    for (const Layout& layout : layouts_) {
        while (&document_.layers[layer] != layout.part().layer)
            ++layer; // the layouts are in the order of the layers
        if (!layout.grown())
            continue;
        for (const FileChunk& chunk : document_.layers[layer].chunks)
            if (chunk.role == ChunkRole::opaque && chunk.id != id_vmpa &&
                !is_of_whole_file(chunk.id))
                warnings(fmt::format("{}: chunk {} is kept as it was; what it says of single "
                                     "points or polygons does not cover the added ones",
                                     layer_title(document_, layer), mesh::to_text(chunk.id)));
    }
}

void Plan::write(ByteSink& sink) const
{
    Encoder out(sink);
    out.u4(id_form);
    out.u4(static_cast<std::uint32_t>(form_size_));
    out.u4(id_lwo2);
    auto size = sizes_.begin();
    for (const Part& part : parts_) {
        for (const Step& step : part.steps()) {
            out.u4(step_id(step));
            out.u4(static_cast<std::uint32_t>(*size));
            write_body(part.source, step, out);
            if (*size % 2 != 0)
                out.u1(std::to_integer<std::uint32_t>(step.chunk->pad));
            ++size;
        }
    }
    for (const std::string& name : plain_surfaces_) {
        out.u4(id_surf);
        out.u4(static_cast<std::uint32_t>(plain_surface_size(name)));
        write_plain_surface(name, out);
    }
    out.flush();
}

class VectorSink final : public ByteSink {
public:
    explicit VectorSink(std::size_t size) { bytes.reserve(size); }
    void write(std::span<const std::byte> run) override
    {
        bytes.insert(bytes.end(), run.begin(), run.end());
    }
    std::vector<std::byte> bytes;
};

class FileSink final : public ByteSink {
public:
    explicit FileSink(FileWriter& file) : file_(file) {}
    void write(std::span<const std::byte> run) override { file_.write(run); }

private:
    FileWriter& file_;
};

} // namespace

namespace lwo2 {

std::vector<std::byte> write_bytes(const mesh::Document& document, const WarningSink& warnings,
                                   const Limits& limits)
{
    const Plan plan(document, limits);
    plan.warn_of_outgrown_chunks(warnings);
    VectorSink sink(static_cast<std::size_t>(plan.file_size()));
    plan.write(sink);
    return std::move(sink.bytes);
}

void write_file(const mesh::Document& document, const std::filesystem::path& path,
                const WarningSink& warnings, const Limits& limits)
{
    const Plan plan(document, limits);
    plan.warn_of_outgrown_chunks(warnings);
    FileWriter file(path);
    FileSink sink(file);
    plan.write(sink);
    file.commit();
}

} // namespace lwo2

void check_writable(const mesh::Document& document) { static_cast<void>(Plan(document, Limits{})); }

std::vector<std::byte> write_lwo2(const mesh::Document& document, const WarningSink& warnings)
{
    return write_bytes(document, warnings, {});
}

void write_lwo2_file(const mesh::Document& document, const std::filesystem::path& path,
                     const WarningSink& warnings)
{
    write_file(document, path, warnings, {});
}

} // namespace formats
