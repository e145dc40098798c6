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
#include "mesh/optional_box.h"
#include "mesh/tag_column.h"
#include "mesh/tags.h"

namespace mesh {

constexpr FourCC polygon_face = fourcc("FACE"); ///< ordinary polygon
constexpr FourCC polygon_curv = fourcc("CURV"); ///< spline through its points
constexpr FourCC polygon_ptch = fourcc("PTCH"); ///< subdivision patch

constexpr FourCC tag_surf = fourcc("SURF"); ///< kind of the tag that names a polygon's surface

/// The polygons of a layer: type, points, tags, flags and selection state of each. Stored as one
/// array of fixed-size records and one flat array of the corners of all polygons; tags other than
/// the surface are stored in a TagColumn per kind. Indices are not checked.
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

    /// The concatenated point indices of the polygons in [begin, end).
    [[nodiscard]] std::span<const std::uint32_t> corners(std::size_t begin,
                                                         std::size_t end) const noexcept
    {
        return corners_.span().subspan(start_of(begin), start_of(end) - start_of(begin));
    }

    /// The six flag bits that the file stores with the point count; the polygon type defines them.
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

    /// The tag kinds other than `tag_surf` that were ever set, in order of first use.
    [[nodiscard]] std::vector<FourCC> other_tag_kinds() const;

    /// One column per kind in `other_tag_kinds`, in the same order.
    [[nodiscard]] std::span<const TagColumn> other_tags() const noexcept { return *others_; }

    /// Replaces each polygon's surface by `surface(tag)` and each other tag by `other(tag)`.
    template <typename Surface, typename Other> void change_tags(Surface surface, Other other)
    {
        for (std::size_t polygon = 0; polygon < size(); ++polygon)
            if (records_[polygon].surface != no_tag)
                records_[polygon].surface = surface(records_[polygon].surface);
        if (std::vector<TagColumn>* const others = others_.get())
            for (TagColumn& tags : *others)
                tags.change_each(other);
    }

    /// The types of all polygons ever added, in order of first use.
    [[nodiscard]] std::span<const FourCC> types() const noexcept { return type_names_; }

    /// Appends a polygon without tags and flags, not selected.
    /// @throws std::length_error past 65,536 types or 2^32 - 1 corners in one layer; std::bad_alloc
    void add(FourCC type, std::span<const std::uint32_t> points)
    {
        std::copy(points.begin(), points.end(), extend(type, points.size()));
    }

    /// Appends a polygon of `count` points without tags and flags, not selected. Returns a pointer
    /// to the uninitialised point indices, which the caller sets before the next change.
    /// @throws std::length_error, std::bad_alloc
    [[nodiscard]] std::uint32_t* extend(FourCC type, std::size_t count)
    {
        if (!has_spare_capacity(type, count)) [[unlikely]]
            return extend_slow(type, count);
        return extend_by({0, no_tag, records_.back().type, 0, false}, count);
    }

    /// Fast path of `extend` followed by `copy_attributes` from polygon `from` of `source`. Works
    /// if the last polygon has the same type, there is spare capacity, and `source` has no tags
    /// other than surfaces. Otherwise returns null and does nothing.
    [[nodiscard]] std::uint32_t* try_extend(FourCC type, std::size_t count, const Polygons& source,
                                            std::size_t from) noexcept
    {
        if (!has_spare_capacity(type, count) || source.others_.has_value())
            return nullptr;
        const Record& model = source.records_[from];
        const bool same_type = source.type_names_[model.type] == type;
        return extend_by({0, model.surface, records_.back().type,
                          same_type ? model.flags : std::uint8_t{0}, false},
                         count);
    }

    /// Copies all tags of polygon `from`, surface included, to `polygon`; also the flags if both
    /// have the same type. @throws std::bad_alloc
    void copy_attributes(std::size_t from, std::size_t polygon)
    {
        copy_attributes(*this, from, polygon);
    }

    /// Copies tags and flags from a polygon of `source`, a layer of the same document.
    /// @throws std::bad_alloc
    void copy_attributes(const Polygons& source, std::size_t from, std::size_t polygon)
    {
        const Record& model = source.records_[from];
        Record& copy = records_[polygon];
        copy.surface = model.surface;
        if (type_names_[copy.type] == source.type_names_[model.type])
            copy.flags = model.flags;
        if (source.others_.has_value())
            copy_other_tags(source, from, polygon);
    }

    /// Removes the polygons from index `count` on.
    void truncate(std::size_t count) noexcept;

    /// A snapshot of the sizes, for `truncate`.
    struct Mark {
        std::size_t polygons = 0;
        std::size_t types = 0;     ///< size of `types()`
        std::size_t tag_kinds = 0; ///< size of `other_tag_kinds()`
    };
    [[nodiscard]] Mark mark() const noexcept;

    /// Removes polygons, types and tag kinds added since the mark was taken. Changes to older
    /// polygons stay.
    void truncate(const Mark& mark) noexcept;

    /// Reserves capacity for `polygons` polygons and `corners` corners in all.
    /// @throws std::bad_alloc
    void reserve(std::size_t polygons, std::size_t corners);

private:
    static constexpr std::size_t most_corners = std::numeric_limits<std::uint32_t>::max();

    /// The fixed-size attributes of a polygon.
    struct Record {
        std::uint32_t start = 0; ///< index of its first corner in `corners_`
        TagIndex surface = no_tag;
        std::uint16_t type = 0; ///< index in `type_names_`
        std::uint8_t flags = 0;
        bool selected = false;
    };

    /// Index of a polygon's first corner; for index `size()`, the number of corners.
    [[nodiscard]] std::size_t start_of(std::size_t polygon) const noexcept
    {
        return polygon < records_.size() ? records_[polygon].start : corners_.size();
    }
    /// Whether a polygon of this type can be added without growing; false if the last polygon has
    /// another type.
    [[nodiscard]] bool has_spare_capacity(FourCC type, std::size_t count) const noexcept
    {
        return !records_.empty() && type_names_[records_.back().type] == type &&
               records_.spare_capacity() != 0 && corners_.spare_capacity() >= count &&
               most_corners - corners_.size() >= count;
    }
    /// Appends a polygon with this record (`start` is set here). Requires spare capacity.
    std::uint32_t* extend_by(const Record& record, std::size_t count) noexcept
    {
        *records_.extend(1) = {static_cast<std::uint32_t>(corners_.size()), record.surface,
                               record.type, record.flags, record.selected};
        return corners_.extend(count);
    }
    [[nodiscard]] std::uint32_t* extend_slow(FourCC type, std::size_t count);
    [[nodiscard]] std::uint16_t type_number(FourCC type);
    void copy_other_tags(const Polygons& source, std::size_t from, std::size_t polygon);

    std::vector<FourCC> type_names_;
    /// Index in `type_names_` by type. Empty if all polygons of the layer have one type.
    OptionalBox<std::unordered_map<FourCC, std::uint16_t>> type_numbers_;
    Buffer<Record> records_;
    Buffer<std::uint32_t> corners_;
    OptionalBox<std::vector<TagColumn>> others_;
};

} // namespace mesh
