// SPDX-License-Identifier: MIT
#include "mesh/polygons.h"

#include <limits>
#include <stdexcept>

namespace mesh {

std::uint16_t Polygons::type_number(FourCC type)
{
    // Consecutive polygons mostly have the same type.
    if (!records_.empty() && type_names_[records_.back().type] == type)
        return records_.back().type;
    if (!type_names_.empty() && type_names_.front() == type)
        return 0;
    const auto known = type_numbers_->find(type);
    if (known != type_numbers_->end())
        return known->second;
    if (type_names_.size() > std::numeric_limits<std::uint16_t>::max())
        throw std::length_error("a layer holds more than 65,536 types of polygons");
    const auto number = static_cast<std::uint16_t>(type_names_.size());
    type_names_.push_back(type);
    try {
        if (number > 0)
            type_numbers_.get_or_create().emplace(type, number);
    } catch (...) {
        type_names_.pop_back();
        throw;
    }
    return number;
}

std::uint32_t* Polygons::extend_slow(FourCC type, std::size_t count)
{
    if (count > most_corners - corners_.size())
        throw std::length_error("a layer holds more than 4,294,967,295 polygon corners");
    // Everything that can throw comes first, so that the polygons are unchanged on failure.
    const std::uint16_t number = type_number(type);
    records_.reserve_more(records_.size() + 1);
    const auto start = static_cast<std::uint32_t>(corners_.size());
    std::uint32_t* const room = corners_.extend(count);
    records_.push_back({start, no_tag, number, 0, false});
    return room;
}

TagIndex Polygons::tag(FourCC kind, std::size_t polygon) const noexcept
{
    if (kind == tag_surf)
        return records_[polygon].surface;
    for (const TagColumn& tags : *others_)
        if (tags.kind() == kind)
            return tags[polygon];
    return no_tag;
}

void Polygons::set_tag(FourCC kind, std::size_t polygon, TagIndex tag)
{
    if (kind == tag_surf) {
        records_[polygon].surface = tag;
        return;
    }
    std::vector<TagColumn>& others = others_.get_or_create();
    for (TagColumn& tags : others) {
        if (tags.kind() == kind) {
            tags.set(polygon, tag);
            return;
        }
    }
    others.emplace_back(kind).set(polygon, tag);
}

std::vector<FourCC> Polygons::other_tag_kinds() const
{
    std::vector<FourCC> kinds;
    kinds.reserve(others_->size());
    for (const TagColumn& tags : *others_)
        kinds.push_back(tags.kind());
    return kinds;
}

void Polygons::copy_other_tags(const Polygons& source, std::size_t from, std::size_t polygon)
{
    // If `source` is this object, no kind is new, so the vector does not grow during the loop.
    for (const TagColumn& tags : *source.others_)
        if (const TagIndex tag = tags[from]; tag != no_tag)
            set_tag(tags.kind(), polygon, tag);
}

void Polygons::truncate(std::size_t count) noexcept
{
    corners_.truncate(start_of(count));
    records_.truncate(count);
    if (auto* const others = others_.get())
        for (TagColumn& tags : *others)
            tags.truncate(count);
}

Polygons::Mark Polygons::mark() const noexcept
{
    return {size(), type_names_.size(), others_->size()};
}

void Polygons::truncate(const Mark& mark) noexcept
{
    truncate(mark.polygons);
    while (type_names_.size() > mark.types) {
        if (auto* const numbers = type_numbers_.get())
            numbers->erase(type_names_.back());
        type_names_.pop_back();
    }
    if (auto* const others = others_.get())
        others->erase(others->begin() + static_cast<std::ptrdiff_t>(mark.tag_kinds), others->end());
    if (mark.tag_kinds == 0)
        others_.reset();
}

void Polygons::reserve(std::size_t polygons, std::size_t corners)
{
    records_.reserve(polygons);
    corners_.reserve(corners);
}

} // namespace mesh
