// SPDX-License-Identifier: MIT
#include "mesh/tag_column.h"

#include <utility>

namespace mesh {

namespace {

/// Up to this number of polygons per tag an array is smaller and faster than a map.
constexpr std::size_t spread = 8;

} // namespace

void TagColumn::set(std::size_t polygon, TagIndex tag)
{
    if (!sparse_.empty()) {
        set_sparse(polygon, tag);
        return;
    }
    if (dense_.empty())
        first_ = polygon;
    const std::size_t place = polygon - first_; // of a polygon before the first it is huge
    if (place < dense_.size()) {
        dense_count_ += dense_[place] == no_tag ? 1u : 0u;
        dense_[place] = tag;
        return;
    }
    if (place / spread <= dense_count_) {
        dense_.reserve_more(place + 1);
        dense_.resize(place, no_tag);
        dense_.push_back(tag);
        ++dense_count_;
        return;
    }
    make_sparse();
    set_sparse(polygon, tag);
}

void TagColumn::set_sparse(std::size_t polygon, TagIndex tag)
{
    sparse_.insert_or_assign(number(polygon), tag);
    const std::size_t range = sparse_.rbegin()->first - sparse_.begin()->first;
    if (sparse_.size() >= sparse_until_ && range / spread <= sparse_.size())
        make_dense();
}

/// A map is converted back to an array only after doubling in size, so that the conversions cost
/// amortised constant time per tag in any order.
void TagColumn::make_sparse()
{
    std::map<std::uint32_t, TagIndex> rows;
    for_each_in(first_, first_ + dense_.size(), [&](std::size_t at, TagIndex tag) {
        rows.emplace_hint(rows.end(), number(at), tag);
    });
    sparse_until_ = rows.size() * 2;
    sparse_ = std::move(rows);
    dense_ = {};
    dense_count_ = 0;
}

void TagColumn::make_dense()
{
    Buffer<TagIndex> array;
    array.reserve(sparse_.rbegin()->first - sparse_.begin()->first + std::size_t{1});
    const std::size_t first = sparse_.begin()->first;
    for (const auto& [polygon, tag] : sparse_) {
        array.resize(polygon - first, no_tag);
        array.push_back(tag);
    }
    first_ = first;
    dense_ = std::move(array);
    dense_count_ = sparse_.size();
    sparse_.clear();
}

TagIndex TagColumn::find_sparse(std::size_t polygon) const noexcept
{
    const auto found = sparse_.find(number(polygon));
    return found == sparse_.end() ? no_tag : found->second;
}

void TagColumn::truncate(std::size_t count) noexcept
{
    sparse_.erase(sparse_.lower_bound(number(count)), sparse_.end());
    const std::size_t left = count > first_ ? count - first_ : 0;
    for (std::size_t place = left; place < dense_.size(); ++place)
        dense_count_ -= dense_[place] != no_tag ? 1u : 0u;
    dense_.truncate(left);
}

} // namespace mesh
