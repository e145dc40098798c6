// SPDX-License-Identifier: MIT
#include "mesh/vertex_map.h"

#include <bit>

namespace mesh {

std::size_t VertexMap::sparse_rank(std::uint32_t point) const noexcept
{
    const std::size_t word = point / 64u;
    const std::uint64_t below = (std::uint64_t{1} << (point % 64u)) - 1u;
    return before_[word] + static_cast<std::size_t>(std::popcount(present_[word] & below));
}

void VertexMap::set_anywhere(std::uint32_t point, std::span<const float> value)
{
    const std::size_t word = point / 64u;
    if (has(point)) {
        float* const stored = values_.data() + rank(point) * dimension_;
        for (std::size_t i = 0; i < dimension_; ++i)
            stored[i] = value[i];
        return;
    }
    // All that can fail comes first, so that a failure leaves the map as it was.
    if (word >= present_.size()) {
        const auto count = static_cast<std::uint32_t>(count_);
        before_.reserve_more(word + 1);
        present_.resize(word + 1, 0);
        before_.resize(word + 1, count);
    }
    if (point >= end_) {
        values_.append(value.first(dimension_));
        end_ = point + 1;
    } else {
        values_.insert(rank(point) * dimension_, value.first(dimension_));
    }
    present_[word] |= std::uint64_t{1} << (point % 64u);
    for (std::size_t w = word + 1; w < before_.size(); ++w)
        ++before_[w];
    ++count_;
}

void VertexMap::append(std::span<const std::uint32_t> points, std::span<const float> values)
{
    if (points.empty())
        return;
    const std::size_t words = points.back() / 64u + std::size_t{1};
    const std::size_t old_words = present_.size();
    // All that can fail comes first, so that a failure leaves the map as it was.
    before_.reserve_more(words);
    present_.reserve_more(words);
    values_.append(values.first(points.size() * dimension_));
    present_.resize(words, 0);
    auto count = static_cast<std::uint32_t>(count_);
    std::size_t next_word = old_words;
    for (const std::uint32_t point : points) {
        for (; next_word <= point / 64u; ++next_word)
            before_.push_back(count);
        present_[point / 64u] |= std::uint64_t{1} << (point % 64u);
        ++count;
    }
    count_ = count;
    end_ = points.back() + 1;
}

void VertexMap::erase(std::uint32_t point) noexcept
{
    if (!has(point))
        return;
    if (point + 1 == end_) {
        truncate(point);
        return;
    }
    const std::size_t word = point / 64u;
    values_.erase(rank(point) * dimension_, dimension_);
    present_[word] &= ~(std::uint64_t{1} << (point % 64u));
    for (std::size_t w = word + 1; w < before_.size(); ++w)
        --before_[w];
    --count_;
}

void VertexMap::truncate(std::uint32_t point_count) noexcept
{
    if (point_count >= end_)
        return;
    const std::size_t word = point_count / 64u;
    count_ = rank(point_count);
    values_.truncate(count_ * dimension_);
    present_[word] &= (std::uint64_t{1} << (point_count % 64u)) - 1u;
    std::size_t words = word + 1;
    while (words > 0 && present_[words - 1] == 0)
        --words;
    present_.truncate(words);
    before_.truncate(words);
    end_ = 0;
    if (words > 0)
        end_ = static_cast<std::uint32_t>(words * 64u) -
               static_cast<std::uint32_t>(std::countl_zero(present_[words - 1]));
}

} // namespace mesh
