// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <unordered_map>
#include <vector>

#include "mesh/buffer.h"
#include "mesh/fourcc.h"
#include "mesh/rare.h"
#include "mesh/tag_column.h"
#include "mesh/tags.h"

namespace mesh {

constexpr FourCC polygon_face = fourcc("FACE"); ///< ordinary polygon
constexpr FourCC polygon_curv = fourcc("CURV"); ///< spline through its points
constexpr FourCC polygon_ptch = fourcc("PTCH"); ///< subdivision patch

constexpr FourCC tag_surf = fourcc("SURF"); ///< kind of the tag that names a polygon's surface

/// The polygons of a layer, in order: for each its type, its points, its tags, flags and whether it
/// is selected. Held as one array of what every polygon has and one flat array of the corners of
/// all polygons; rarer tags have arrays of their own. Indices are not checked.
class Polygons {
public:
    [[nodiscard]] std::size_t size() const noexcept { return records_.size(); }
    /// Number of corners of all polygons.
    [[nodiscard]] std::size_t corner_count() const noexcept { return corners_.size(); }

    [[nodiscard]] FourCC type(std::size_t polygon) const noexcept
    {
        return type_names_[records_[polygon].type];
    }

    /// The polygon's points, as indices into the layer's points, valid until polygons are added.
    [[nodiscard]] std::span<const std::uint32_t> points(std::size_t polygon) const noexcept
    {
        const std::size_t start = records_[polygon].start;
        return {corners_.data() + start, start_of(polygon + 1) - start};
    }

    /// The points of all polygons from `begin` on that lie before `end`, one polygon behind the
    /// other.
    [[nodiscard]] std::span<const std::uint32_t> corners(std::size_t begin,
                                                         std::size_t end) const noexcept
    {
        return corners_.span().subspan(start_of(begin), start_of(end) - start_of(begin));
    }

    /// The six bits that the file keeps beside the point count; their meaning is the type's.
    [[nodiscard]] std::uint8_t flags(std::size_t polygon) const noexcept
    {
        return records_[polygon].flags;
    }
    void set_flags(std::size_t polygon, std::uint8_t flags) noexcept
    {
        records_[polygon].flags = flags;
    }

    [[nodiscard]] bool selected(std::size_t polygon) const noexcept
    {
        return records_[polygon].selected;
    }
    void select(std::size_t polygon, bool on) noexcept { records_[polygon].selected = on; }

    /// The polygon's surface, or `no_tag`.
    [[nodiscard]] TagIndex surface(std::size_t polygon) const noexcept
    {
        return records_[polygon].surface;
    }
    void set_surface(std::size_t polygon, TagIndex tag) noexcept
    {
        records_[polygon].surface = tag;
    }

    /// The polygon's tag of a kind (`tag_surf` included), or `no_tag`.
    [[nodiscard]] TagIndex tag(FourCC kind, std::size_t polygon) const noexcept;
    void set_tag(FourCC kind, std::size_t polygon, TagIndex tag);

    /// The kinds of tags other than `tag_surf` that were ever set, in order of first appearance.
    [[nodiscard]] std::vector<FourCC> other_tag_kinds() const;

    /// The tags of these kinds, for passes over all of them: for each kind, in the same order, the
    /// polygons that have one.
    [[nodiscard]] std::span<const TagColumn> other_tags() const noexcept { return *others_; }

    /// Gives every polygon the tags, surface included, that `surface(tag)` and `other(tag)` make of
    /// those that it has.
    template <typename Surface, typename Other> void change_tags(Surface surface, Other other)
    {
        for (std::size_t polygon = 0; polygon < size(); ++polygon)
            if (records_[polygon].surface != no_tag)
                records_[polygon].surface = surface(records_[polygon].surface);
        if (std::vector<TagColumn>* const others = others_.there())
            for (TagColumn& tags : *others)
                tags.change_each(other);
    }

    /// The types that polygons were ever added of, in order of first appearance.
    [[nodiscard]] std::span<const FourCC> types() const noexcept { return type_names_; }

    /// Appends a polygon without tags and flags, not selected.
    /// @throws std::length_error past 65,536 types or 2^32 - 1 corners in one layer.
    void add(FourCC type, std::span<const std::uint32_t> points)
    {
        std::copy(points.begin(), points.end(), extend(type, points.size()));
    }

    /// The same with `count` points, to be set through the pointer that is returned.
    [[nodiscard]] std::uint32_t* extend(FourCC type, std::size_t count)
    {
        if (!has_room(type, count)) [[unlikely]]
            return extend_anyhow(type, count);
        return extend_by({0, no_tag, records_.back().type, 0, false}, count);
    }

    /// The same with the attributes of a polygon `from` of `source` (see `copy_attributes`), where
    /// it costs nothing: the last polygon is of the same type, there is room for one more, and
    /// there are no rarer tags to copy. Null: nothing was done.
    [[nodiscard]] std::uint32_t* extend_in_room(FourCC type, std::size_t count,
                                                const Polygons& source, std::size_t from) noexcept
    {
        if (!has_room(type, count) || source.others_.is_there())
            return nullptr;
        const Record& model = source.records_[from];
        const bool same_type = source.type_names_[model.type] == type;
        return extend_by({0, model.surface, records_.back().type,
                          same_type ? model.flags : std::uint8_t{0}, false},
                         count);
    }

    /// Gives `polygon` all tags of `from`, surface included, and its flags where both are of one
    /// type.
    void copy_attributes(std::size_t from, std::size_t polygon)
    {
        copy_attributes(*this, from, polygon);
    }

    /// The same from another layer of the document, whose tags have the same numbers.
    void copy_attributes(const Polygons& source, std::size_t from, std::size_t polygon)
    {
        const Record& model = source.records_[from];
        Record& copy = records_[polygon];
        copy.surface = model.surface;
        if (type_names_[copy.type] == source.type_names_[model.type])
            copy.flags = model.flags;
        if (source.others_.is_there())
            copy_other_tags(source, from, polygon);
    }

    /// Drops all polygons from `count` on.
    void truncate(std::size_t count) noexcept;

    /// How much there is at one moment.
    struct Mark {
        std::size_t polygons = 0;
        std::size_t types = 0;     ///< types ever seen
        std::size_t tag_kinds = 0; ///< kinds of tags ever set, `tag_surf` aside
    };
    [[nodiscard]] Mark mark() const noexcept;

    /// Drops everything that was added since the mark was taken, new kinds of tags included. What
    /// was changed on older polygons stays.
    void truncate(const Mark& mark) noexcept;

    /// Makes room for `polygons` polygons and `corners` corners in all.
    void reserve(std::size_t polygons, std::size_t corners);

private:
    static constexpr std::size_t most_corners = std::numeric_limits<std::uint32_t>::max();

    /// What every polygon has.
    struct Record {
        std::uint32_t start = 0; ///< where its corners begin
        TagIndex surface = no_tag;
        std::uint16_t type = 0; ///< number in `type_names_`
        std::uint8_t flags = 0;
        bool selected = false;
    };

    /// Where a polygon's corners begin; for the one behind the last, where all of them end.
    [[nodiscard]] std::size_t start_of(std::size_t polygon) const noexcept
    {
        return polygon < records_.size() ? records_[polygon].start : corners_.size();
    }
    /// Whether a polygon of the last one's type can be added at no cost.
    [[nodiscard]] bool has_room(FourCC type, std::size_t count) const noexcept
    {
        return !records_.empty() && type_names_[records_.back().type] == type &&
               records_.room() != 0 && corners_.room() >= count &&
               most_corners - corners_.size() >= count;
    }
    /// Adds a polygon, for which there is room, of this record but for the start.
    std::uint32_t* extend_by(const Record& record, std::size_t count) noexcept
    {
        *records_.extend(1) = {static_cast<std::uint32_t>(corners_.size()), record.surface,
                               record.type, record.flags, record.selected};
        return corners_.extend(count);
    }
    [[nodiscard]] std::uint32_t* extend_anyhow(FourCC type, std::size_t count);
    [[nodiscard]] std::uint16_t type_number(FourCC type);
    void copy_other_tags(const Polygons& source, std::size_t from, std::size_t polygon);

    std::vector<FourCC> type_names_;
    /// Position in `type_names_`. Not there for a layer whose polygons are all of one type.
    Rare<std::unordered_map<FourCC, std::uint16_t>> type_numbers_;
    Buffer<Record> records_;
    Buffer<std::uint32_t> corners_;
    Rare<std::vector<TagColumn>> others_;
};

} // namespace mesh
