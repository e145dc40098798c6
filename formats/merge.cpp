// SPDX-License-Identifier: MIT
#include "formats/merge.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/join/surface_merge.h"

namespace formats {

namespace {

using namespace lwo2;
using mesh::ChunkRole;
using mesh::FileChunk;
using mesh::TagIndex;

/// Allocates unused layer numbers.
class LayerNumbers {
public:
    /// The number itself if it is free, else one above the highest, else any free one.
    [[nodiscard]] std::uint16_t take(std::uint16_t wanted)
    {
        std::size_t number = wanted;
        if (number >= no_parent || taken_[number])
            number = end_;
        if (number >= no_parent) {
            // numbers are never freed, so the search continues where it ended
            const auto from = taken_.begin() + static_cast<std::ptrdiff_t>(first_free_);
            number =
                static_cast<std::size_t>(std::find(from, taken_.end(), false) - taken_.begin());
            first_free_ = number;
        }
        if (number >= no_parent)
            throw LimitError(fmt::format("document: more than {} layers are more than LWO2 can "
                                         "number; join fewer files",
                                         no_parent));
        taken_[number] = true;
        end_ = std::max(end_, number + 1);
        return static_cast<std::uint16_t>(number);
    }

    void note(std::uint16_t number)
    {
        if (number >= no_parent)
            return;
        taken_[number] = true;
        end_ = std::max(end_, number + std::size_t{1});
    }

private:
    std::vector<bool> taken_ = std::vector<bool>(no_parent, false);
    std::size_t end_ = 0;
    std::size_t first_free_ = 0; ///< all before it are taken
};

bool is_default_layer(const mesh::Layer& layer)
{
    return !layer.chunks.empty() && layer.chunks.front().role != ChunkRole::layer;
}

/// Adds the layer chunk to a layer whose file has none; required if there are several layers. Does
/// not throw if the layer's chunks have spare capacity.
void open_layer(mesh::Layer& layer)
{
    if (is_default_layer(layer))
        layer.chunks.insert(layer.chunks.begin(), {.id = id_layr, .role = ChunkRole::layer});
}

/// The new layer numbers: first that of the layer of `into` without a layer chunk, if any, then
/// those of `from`.
std::vector<std::uint16_t> number_layers(const mesh::Document& into, const mesh::Document& from)
{
    LayerNumbers numbers;
    std::vector<std::uint16_t> result;
    for (const mesh::Layer& layer : into.layers) {
        if (!is_default_layer(layer))
            numbers.note(layer.number);
        if (layer.parent)
            numbers.note(*layer.parent); // it may name no layer, and must not begin to
    }
    for (const mesh::Layer& layer : into.layers)
        if (is_default_layer(layer))
            result.push_back(numbers.take(layer.number));
    for (const mesh::Layer& layer : from.layers)
        result.push_back(numbers.take(layer.number));
    return result;
}

/// Numbers the layers of `from`; the first of the numbers are for `into` (see `number_layers`).
void number_incoming(mesh::Document& from, std::span<const std::uint16_t> numbers)
{
    auto number = numbers.end() - static_cast<std::ptrdiff_t>(from.layers.size());
    std::unordered_map<std::uint16_t, std::uint16_t> renumbered;
    for (mesh::Layer& layer : from.layers) {
        renumbered.try_emplace(layer.number, *number);
        layer.number = *number++;
    }
    for (mesh::Layer& layer : from.layers) {
        if (!layer.parent)
            continue;
        const auto found = renumbered.find(*layer.parent);
        if (found != renumbered.end())
            layer.parent = found->second;
        else
            layer.parent.reset(); // it named no layer, and must not begin to
    }
}

/// Maps each tag of `from` to its index in `into`, as a surface and as any other tag.
struct TagNames {
    std::vector<std::string> surfaces;
    std::vector<std::string> others;
    std::vector<bool> is_surface;
    std::vector<bool> is_other;
};

TagNames name_tags(const mesh::Document& from, SurfaceMerge& surfaces)
{
    const std::size_t count = from.tags.size();
    TagNames names{std::vector<std::string>(count), std::vector<std::string>(count),
                   std::vector<bool>(count), std::vector<bool>(count)};
    for (const mesh::Layer& layer : from.layers) {
        const std::size_t polygons = layer.polygons.size();
        for (std::size_t p = 0; p < polygons; ++p)
            if (const TagIndex tag = layer.polygons.surface(p); tag != mesh::no_tag)
                names.is_surface[tag] = true;
        for (const mesh::TagColumn& tags : layer.polygons.other_tags())
            tags.for_each_in(0, polygons,
                             [&](std::size_t, TagIndex tag) { names.is_other[tag] = true; });
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::string& text = from.tags[static_cast<TagIndex>(i)];
        if (names.is_surface[i])
            names.surfaces[i] = surfaces.name(text);
        // many readers misread files with an empty tag, so none is added
        names.others[i] = text.empty() ? "unnamed" : text;
    }
    return names;
}

void apply_tags(mesh::TagList& tags, mesh::Document& from, const TagNames& names)
{
    const std::size_t count = from.tags.size();
    std::vector<TagIndex> surfaces(count, mesh::no_tag);
    std::vector<TagIndex> others(count, mesh::no_tag);
    for (std::size_t i = 0; i < count; ++i) {
        if (names.is_surface[i])
            surfaces[i] = tags.intern(names.surfaces[i]);
        if (names.is_other[i])
            others[i] = tags.intern(names.others[i]);
    }
    for (mesh::Layer& layer : from.layers)
        layer.polygons.change_tags([&](TagIndex tag) { return surfaces[tag]; },
                                   [&](TagIndex tag) { return others[tag]; });
}

bool is_merged_apart(const FileChunk& chunk)
{
    return chunk.id == id_surf || chunk.id == id_clip || chunk.id == id_envl ||
           chunk.role == ChunkRole::tags;
}

void warn_of_left_out(const std::vector<FileChunk>& chunks, std::string_view from_name,
                      const WarningSink& warnings)
{
    if (!warnings)
        return;
    for (const FileChunk& chunk : chunks)
        if (!is_of_whole_file(chunk.id))
            warnings(fmt::format("chunk {} of {} is left out; it belongs to no layer",
                                 mesh::to_text(chunk.id), from_name));
}

/// Does not throw if `tail` has spare capacity for them.
void insert_chunks(std::vector<FileChunk>& tail, SurfaceMerge::Chunks&& chunks)
{
    const auto is_surface = [](const FileChunk& chunk) { return chunk.id == id_surf; };
    const auto last = std::find_if(tail.rbegin(), tail.rend(), is_surface);
    tail.insert(last == tail.rend() ? tail.end() : last.base(),
                std::make_move_iterator(chunks.surfaces.begin()),
                std::make_move_iterator(chunks.surfaces.end()));
    // images and envelopes come before the surfaces that refer to them
    tail.insert(std::find_if(tail.begin(), tail.end(), is_surface),
                std::make_move_iterator(chunks.numbered.begin()),
                std::make_move_iterator(chunks.numbered.end()));
}

/// Rolls back appended layers and tags of a document unless committed.
class AppendRollback {
public:
    explicit AppendRollback(mesh::Document& document)
        : document_(document), layers_(document.layers.size()), tags_(document.tags.size())
    {}
    AppendRollback(const AppendRollback&) = delete;
    AppendRollback& operator=(const AppendRollback&) = delete;
    ~AppendRollback()
    {
        if (kept_)
            return;
        document_.layers.truncate(layers_);
        document_.tags.truncate(tags_);
    }
    void keep() noexcept { kept_ = true; }

private:
    mesh::Document& document_;
    std::size_t layers_;
    std::size_t tags_;
    bool kept_ = false;
};

} // namespace

void append_document(mesh::Document& into, mesh::Document&& from, std::string_view from_name,
                     const WarningSink& warnings)
{
    static_assert(std::is_nothrow_move_assignable_v<mesh::Layer>);
    // Everything that can throw comes first. It changes in `into` only what can be rolled back, and
    // capacities.
    const auto numbers = number_layers(into, from);
    SurfaceMerge surfaces(into, from, from_name, warnings);
    const TagNames names = name_tags(from, surfaces);
    auto chunks = surfaces.finish();
    warn_of_left_out(from.head, from_name, warnings);
    warn_of_left_out(from.tail, from_name, warnings);
    number_incoming(from, numbers);
    for (mesh::Layer& layer : from.layers) {
        open_layer(layer);
        std::erase_if(layer.chunks, is_merged_apart);
    }
    into.tail.reserve(into.tail.size() + chunks.numbered.size() + chunks.surfaces.size());
    for (mesh::Layer& layer : into.layers)
        layer.chunks.reserve(layer.chunks.size() + (is_default_layer(layer) ? 1 : 0));
    AppendRollback rollback(into);
    apply_tags(into.tags, from, names);
    const std::size_t old_layers = into.layers.size();
    into.layers.resize(old_layers + from.layers.size());

    // Nothing below throws.
    rollback.keep();
    auto number = numbers.begin();
    for (std::size_t i = 0; i < old_layers; ++i) {
        mesh::Layer& layer = into.layers[i];
        if (is_default_layer(layer))
            layer.number = *number++;
        open_layer(layer);
    }
    insert_chunks(into.tail, std::move(chunks));
    std::move(from.layers.begin(), from.layers.end(),
              into.layers.begin() + static_cast<std::ptrdiff_t>(old_layers));
    from.layers.clear();
    from.tags.truncate(0);
    from.head.clear();
    from.tail.clear();
    from.file_tags = 0;
}

} // namespace formats
