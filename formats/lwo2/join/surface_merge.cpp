// SPDX-License-Identifier: MIT
#include "formats/lwo2/join/surface_merge.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "formats/lwo2/chunks.h"
#include "formats/lwo2/ids.h"

namespace formats::lwo2 {

namespace {

const Renumber leave_numbers{[](std::uint32_t number) { return number; },
                             [](std::uint32_t number) { return number; }};

} // namespace

SurfaceMerge::SurfaceMerge(const mesh::Document& into, const mesh::Document& from,
                           std::string_view from_name, const WarningSink& warnings)
    : into_(into), from_(from), from_name_(from_name), warnings_(warnings), images_(id_clip),
      envelopes_(id_envl)
{
    for_each_chunk(into, [this](const mesh::FileChunk& chunk) {
        if (chunk.id == id_clip)
            images_.add_present(chunk);
        else if (chunk.id == id_envl)
            envelopes_.add_present(chunk);
        else if (chunk.id == id_surf)
            if (const auto head = surface_head(chunk.body))
                present_.try_emplace(head->name, *head);
    });
    for_each_chunk(from, [this](const mesh::FileChunk& chunk) {
        if (chunk.id == id_clip)
            images_.add_incoming(chunk);
        else if (chunk.id == id_envl)
            envelopes_.add_incoming(chunk);
        else if (chunk.id == id_surf)
            if (const auto head = surface_head(chunk.body))
                incoming_.try_emplace(head->name, *head);
    });
}

const std::string& SurfaceMerge::name(const std::string& incoming)
{
    const auto known = names_.find(incoming);
    if (known != names_.end())
        return known->second;
    std::string decided = decide(incoming);
    return names_.emplace(incoming, std::move(decided)).first->second;
}

std::string SurfaceMerge::decide(const std::string& incoming)
{
    const auto described = incoming_.find(incoming);
    const auto there = present_.find(incoming);
    if (described == incoming_.end()) {
        // many readers misread files with an empty name, so none is added
        if (!incoming.empty() || into_.tags.find("") != mesh::no_tag)
            return incoming;
        bool is_there = false;
        return rename(incoming, nullptr, is_there);
    }
    MappedSurface mapped = map_surface(described->second);
    if (there == present_.end() && !incoming.empty()) {
        add_surface(std::move(mapped));
        return incoming;
    }
    if (there != present_.end() && is_alike(mapped, there->second))
        return incoming;
    bool is_there = false;
    std::string renamed = rename(incoming, &mapped, is_there);
    if (warnings_)
        warnings_(fmt::format("surface \"{}\" of {} is not the one that is there; it is named "
                              "\"{}\" now",
                              incoming, from_name_, renamed));
    if (!is_there) {
        mapped.head.name = renamed;
        add_surface(std::move(mapped));
    }
    return renamed;
}

bool SurfaceMerge::is_of_incoming(const std::string& name) const
{
    return incoming_.contains(name) || from_.tags.find(name) != mesh::no_tag;
}

/// A new name for a surface. Sets `is_there` if the target document already has an equal surface of
/// this name, as after appending the same document twice.
std::string SurfaceMerge::rename(const std::string& incoming, const MappedSurface* mapped,
                                 bool& is_there)
{
    const std::string base = incoming.empty() ? "Default" : incoming;
    for (int count = 1;; ++count) {
        std::string candidate = count == 1 ? fmt::format("{} ({})", base, from_name_)
                                           : fmt::format("{} ({} {})", base, from_name_, count);
        if (is_of_incoming(candidate) || new_names_.contains(candidate))
            continue;
        const auto there = present_.find(candidate);
        is_there = there != present_.end() && mapped != nullptr && is_alike(*mapped, there->second);
        if (!is_there && (there != present_.end() || into_.tags.find(candidate) != mesh::no_tag))
            continue;
        if (!is_there)
            new_names_.insert(candidate);
        return candidate;
    }
}

SurfaceMerge::MappedSurface SurfaceMerge::map_surface(const SurfaceHead& head)
{
    MappedSurface mapped{head};
    const Renumber renumber{[&](std::uint32_t number) {
                                mapped.images.push_back(number);
                                return map_image(number);
                            },
                            [&](std::uint32_t number) {
                                mapped.envelopes.push_back(number);
                                return map_envelope(number);
                            }};
    mapped.rest = renumber_surface(head.rest, renumber);
    const auto is_new_image = [this](std::uint32_t number) { return images_.is_new(number); };
    const auto is_new_envelope = [this](std::uint32_t number) { return envelopes_.is_new(number); };
    mapped.needs_new =
        std::any_of(mapped.images.begin(), mapped.images.end(), is_new_image) ||
        std::any_of(mapped.envelopes.begin(), mapped.envelopes.end(), is_new_envelope);
    mapped.has_nodes = has_node_data(head.rest);
    if (mapped.has_nodes) {
        map_all();
        mapped.needs_new |= all_new_;
    }
    return mapped;
}

bool SurfaceMerge::is_alike(const MappedSurface& mapped, const SurfaceHead& present) const
{
    return !mapped.needs_new && mapped.head.source == present.source &&
           mapped.rest == renumber_surface(present.rest, leave_numbers);
}

void SurfaceMerge::add_surface(MappedSurface mapped)
{
    if (mapped.has_nodes && all_moved_ && warnings_)
        warnings_(fmt::format("surface \"{}\" of {} has node data, which is kept as it was; images "
                              "and envelopes that it names by number may have another number now",
                              mapped.head.name, from_name_));
    added_.push_back(std::move(mapped));
}

std::uint32_t SurfaceMerge::map_envelope(std::uint32_t number)
{
    return envelopes_.map(
        number, [](std::span<const std::byte> rest) { return Bytes(rest.begin(), rest.end()); });
}

std::uint32_t SurfaceMerge::map_image(std::uint32_t number)
{
    return images_.map(number, [this](std::span<const std::byte> rest) -> std::optional<Bytes> {
        // References between images may be cyclic; such images are copied, never shared.
        if (names_image(rest))
            return std::nullopt;
        bool needs_new = false;
        const Renumber renumber{leave_numbers.image, [&](std::uint32_t envelope) {
                                    const std::uint32_t mapped = map_envelope(envelope);
                                    needs_new |= envelopes_.is_new(envelope);
                                    return mapped;
                                }};
        Bytes content = renumber_image(rest, renumber);
        if (needs_new)
            return std::nullopt;
        return content;
    });
}

void SurfaceMerge::map_all()
{
    if (std::exchange(all_mapped_, true))
        return;
    for (const std::uint32_t number : images_.incoming_numbers()) {
        all_moved_ |= map_image(number) != number;
        all_new_ |= images_.is_new(number);
    }
    for (const std::uint32_t number : envelopes_.incoming_numbers()) {
        all_moved_ |= map_envelope(number) != number;
        all_new_ |= envelopes_.is_new(number);
    }
}

SurfaceMerge::Chunks SurfaceMerge::finish()
{
    // also copy surfaces that others are based on; the list grows during the loop
    for (std::size_t i = 0; i < added_.size(); ++i) {
        const std::string source = added_[i].head.source;
        if (incoming_.contains(source) && !source.empty())
            added_[i].head.source = name(source);
    }
    Chunks chunks;
    add_numbered(chunks);
    chunks.surfaces.reserve(added_.size());
    for (const MappedSurface& mapped : added_)
        chunks.surfaces.push_back(
            make_surface({mapped.head.name, mapped.head.source, mapped.rest}));
    return chunks;
}

void SurfaceMerge::add_numbered(Chunks& chunks)
{
    std::vector<std::uint32_t> images;
    std::unordered_set<std::uint32_t> needed_images;
    std::unordered_set<std::uint32_t> needed_envelopes;
    const auto need_image = [&](std::uint32_t number) {
        const std::uint32_t mapped = map_image(number);
        if (images_.is_new(number) && needed_images.insert(number).second)
            images.push_back(number);
        return mapped;
    };
    const auto need_envelope = [&](std::uint32_t number) {
        const std::uint32_t mapped = map_envelope(number);
        if (envelopes_.is_new(number))
            needed_envelopes.insert(number);
        return mapped;
    };
    bool everything = false;
    for (const MappedSurface& mapped : added_) {
        std::for_each(mapped.images.begin(), mapped.images.end(), need_image);
        std::for_each(mapped.envelopes.begin(), mapped.envelopes.end(), need_envelope);
        everything |= mapped.has_nodes;
    }
    if (everything) {
        for (const std::uint32_t number : images_.incoming_numbers())
            need_image(number);
        for (const std::uint32_t number : envelopes_.incoming_numbers())
            need_envelope(number);
    }
    std::vector<mesh::FileChunk> image_chunks;
    for (std::size_t i = 0; i < images.size(); ++i) { // grows as images name others
        const auto parts = numbered(*images_.incoming(images[i]));
        image_chunks.push_back(
            make_numbered(id_clip, need_image(images[i]),
                          renumber_image(parts->rest, {need_image, need_envelope})));
    }
    for (const std::uint32_t number : envelopes_.incoming_numbers())
        if (needed_envelopes.contains(number))
            chunks.numbered.push_back(make_numbered(id_envl, need_envelope(number),
                                                    numbered(*envelopes_.incoming(number))->rest));
    std::move(image_chunks.begin(), image_chunks.end(), std::back_inserter(chunks.numbered));
}

} // namespace formats::lwo2
