// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>

#include "mesh/buffer.h"
#include "mesh/fourcc.h"
#include "mesh/tags.h"

namespace mesh {

/// The tags of one kind of a layer's polygons. Memory is proportional to the number of tags, not of
/// polygons: an array from the first to the last tagged polygon where most of these have a tag, a
/// sorted map otherwise.
class TagColumn {
public:
    explicit TagColumn(FourCC kind) : kind_(kind) {}

    [[nodiscard]] FourCC kind() const noexcept { return kind_; }

    /// The polygon's tag, or `no_tag`.
    [[nodiscard]] TagIndex operator[](std::size_t polygon) const noexcept
    {
        const std::size_t place = polygon - first_;
        if (place < dense_.size())
            return dense_[place];
        return sparse_.empty() ? no_tag : find_sparse(polygon);
    }

    /// Sets or, with `no_tag`, removes a polygon's tag. @throws std::bad_alloc; the column is then
    /// unchanged.
    void set(std::size_t polygon, TagIndex tag);

    /// Calls `visit(polygon, tag)` for each tagged polygon in [begin, end), in ascending order.
    template <typename Visit>
    void for_each_in(std::size_t begin, std::size_t end, Visit visit) const
    {
        const std::size_t last = std::min(end, first_ + dense_.size());
        for (std::size_t polygon = std::max(begin, first_); polygon < last; ++polygon)
            if (const TagIndex tag = dense_[polygon - first_]; tag != no_tag)
                visit(polygon, tag);
        if (sparse_.empty())
            return;
        for (auto row = sparse_.lower_bound(number(begin));
             row != sparse_.end() && row->first < end; ++row)
            if (row->second != no_tag)
                visit(row->first, row->second);
    }

    /// Whether any polygon in [begin, end) has a tag.
    [[nodiscard]] bool any_in(std::size_t begin, std::size_t end) const noexcept
    {
        const std::size_t last = std::min(end, first_ + dense_.size());
        for (std::size_t polygon = std::max(begin, first_); polygon < last; ++polygon)
            if (dense_[polygon - first_] != no_tag)
                return true;
        if (sparse_.empty())
            return false;
        auto row = sparse_.lower_bound(number(begin));
        while (row != sparse_.end() && row->first < end && row->second == no_tag)
            ++row;
        return row != sparse_.end() && row->first < end;
    }

    /// Replaces each tag by `change(tag)`.
    template <typename Change> void change_each(Change change)
    {
        for (std::size_t place = 0; place < dense_.size(); ++place)
            if (dense_[place] != no_tag)
                dense_[place] = change(dense_[place]);
        for (auto& [polygon, tag] : sparse_)
            if (tag != no_tag)
                tag = change(tag);
    }

    /// Removes the tags of the polygons from index `count` on.
    void truncate(std::size_t count) noexcept;

private:
    [[nodiscard]] static std::uint32_t number(std::size_t polygon) noexcept
    {
        return static_cast<std::uint32_t>(polygon);
    }
    [[nodiscard]] TagIndex find_sparse(std::size_t polygon) const noexcept;
    void set_sparse(std::size_t polygon, TagIndex tag);
    void make_sparse();
    void make_dense();

    FourCC kind_;
    // Either dense_ or sparse_ is in use.
    std::size_t first_ = 0; ///< polygon of the first array element
    Buffer<TagIndex> dense_;
    std::size_t dense_count_ = 0; ///< array elements that are not `no_tag`
    std::map<std::uint32_t, TagIndex> sparse_;
    std::size_t sparse_until_ = 0; ///< below this number of tags the map stays in use
};

} // namespace mesh
