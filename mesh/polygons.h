// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "mesh/buffer.h"
#include "mesh/fourcc.h"
#include "mesh/tags.h"

namespace mesh {

constexpr FourCC polygon_face = fourcc("FACE"); ///< ordinary polygon
constexpr FourCC polygon_curv = fourcc("CURV"); ///< spline through its points
constexpr FourCC polygon_ptch = fourcc("PTCH"); ///< subdivision patch

constexpr FourCC tag_surf = fourcc("SURF"); ///< kind of the tag that names a polygon's surface

/// The polygons of a layer, in order: for each its type, its points, its tags, flags and whether it
/// is selected. Held as one array for each property; the corners of all polygons stand in one flat
/// array. Indices are not checked.
class Polygons {
public:
    [[nodiscard]] std::size_t size() const noexcept { return types_.size(); }
    /// Number of corners of all polygons.
    [[nodiscard]] std::size_t corner_count() const noexcept { return corners_.size(); }

    [[nodiscard]] FourCC type(std::size_t polygon) const noexcept
    {
        return type_names_[types_[polygon]];
    }

    /// The polygon's points, as indices into the layer's points, valid until polygons are added.
    [[nodiscard]] std::span<const std::uint32_t> points(std::size_t polygon) const noexcept
    {
        const std::uint32_t start = starts_[polygon];
        const std::uint32_t end = polygon + 1 < starts_.size()
                                      ? starts_[polygon + 1]
                                      : static_cast<std::uint32_t>(corners_.size());
        return {corners_.data() + start, end - start};
    }

    /// The points of all polygons from `begin` on that lie before `end`, one polygon behind the
    /// other.
    [[nodiscard]] std::span<const std::uint32_t> corners(std::size_t begin,
                                                         std::size_t end) const noexcept
    {
        const auto start_of = [this](std::size_t polygon) {
            return polygon < starts_.size() ? starts_[polygon] : corners_.size();
        };
        return corners_.span().subspan(start_of(begin), start_of(end) - start_of(begin));
    }

    /// The six bits that the file keeps beside the point count; their meaning is the type's.
    [[nodiscard]] std::uint8_t flags(std::size_t polygon) const noexcept { return flags_[polygon]; }
    void set_flags(std::size_t polygon, std::uint8_t flags) noexcept { flags_[polygon] = flags; }

    [[nodiscard]] bool selected(std::size_t polygon) const noexcept
    {
        return selected_[polygon] != 0;
    }
    void select(std::size_t polygon, bool on) noexcept { selected_[polygon] = on ? 1 : 0; }

    /// The polygon's surface, or `no_tag`.
    [[nodiscard]] TagIndex surface(std::size_t polygon) const noexcept
    {
        return surfaces_[polygon];
    }
    void set_surface(std::size_t polygon, TagIndex tag) noexcept { surfaces_[polygon] = tag; }

    /// The polygon's tag of a kind (`tag_surf` included), or `no_tag`.
    [[nodiscard]] TagIndex tag(FourCC kind, std::size_t polygon) const noexcept;
    void set_tag(FourCC kind, std::size_t polygon, TagIndex tag);

    /// The kinds of tags other than `tag_surf` that were ever set, in order of first appearance.
    [[nodiscard]] std::vector<FourCC> other_tag_kinds() const;

    /// Appends a polygon without tags and flags, not selected.
    /// @throws std::length_error past 65,536 types or 2^32 - 1 corners in one layer.
    void add(FourCC type, std::span<const std::uint32_t> points);

    /// Gives `polygon` all tags of `from`, surface included, and its flags where both are of one
    /// type.
    void copy_attributes(std::size_t from, std::size_t polygon)
    {
        copy_attributes(*this, from, polygon);
    }

    /// The same from another layer of the document, whose tags have the same numbers.
    void copy_attributes(const Polygons& source, std::size_t from, std::size_t polygon);

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
    /// Tags of one kind. Shorter than the polygons where the last of them have none.
    struct Tags {
        FourCC kind;
        Buffer<TagIndex> of_polygon;
    };

    [[nodiscard]] std::uint16_t type_number(FourCC type);

    std::vector<FourCC> type_names_;
    std::unordered_map<FourCC, std::uint16_t> type_numbers_; ///< position in `type_names_`
    Buffer<std::uint16_t> types_;                            ///< number in `type_names_`
    Buffer<std::uint32_t> starts_;                           ///< where each polygon's corners begin
    Buffer<std::uint32_t> corners_;
    Buffer<TagIndex> surfaces_;
    Buffer<std::uint8_t> flags_;
    Buffer<std::uint8_t> selected_;
    std::vector<Tags> others_;
};

} // namespace mesh
