// SPDX-License-Identifier: MIT
#include "mesh/vertex_map.h"

#include <bit>
#include <utility>

namespace mesh {

namespace {

/// The 64 presence bits of the points from `first` on, when those from `begin` on that lie before
/// `end` have a value.
std::uint64_t bits_between(std::uint64_t begin, std::uint64_t end, std::uint64_t first) noexcept
{
    constexpr std::uint64_t all = ~std::uint64_t{0};
    const auto from = [first](std::uint64_t point) {
        if (point <= first)
            return all;
        return point - first < 64 ? all << (point - first) : 0;
    };
    return from(begin) & ~from(end);
}

} // namespace

std::size_t VertexMap::scattered_rank(std::uint32_t point) const noexcept
{
    const std::size_t word = point / 64u;
    const std::uint64_t below = (std::uint64_t{1} << (point % 64u)) - 1u;
    return before_[word] + static_cast<std::size_t>(std::popcount(present_[word] & below));
}

void VertexMap::begin_run(std::uint32_t point, std::size_t count) noexcept
{
    present_.truncate(0);
    before_.truncate(0);
    run_begin_ = point;
    run_size_ = static_cast<std::uint32_t>(count);
}

void VertexMap::scatter(std::size_t words)
{
    if (run_size_ != 0)
        words = std::max(words, (end() - 1) / 64u + std::size_t{1});
    if (words <= present_.size())
        return;
    // All that can fail comes first, so that a failure leaves the map as it was.
    before_.reserve_more(words);
    present_.reserve_more(words);
    if (run_size_ != 0) {
        const std::uint64_t run_begin = run_begin_;
        const std::uint64_t run_end = end();
        for (std::uint64_t first = 0; first < run_end; first += 64) {
            before_.push_back(first > run_begin ? static_cast<std::uint32_t>(first - run_begin)
                                                : 0u);
            present_.push_back(bits_between(run_begin, run_end, first));
        }
        scattered_ = std::exchange(run_size_, 0u);
        scattered_end_ = static_cast<std::uint32_t>(run_end);
        run_begin_ = no_run;
    }
    present_.resize(words, 0);
    before_.resize(words, scattered_);
}

void VertexMap::set_anywhere(std::uint32_t point, std::span<const float> value)
{
    value = value.first(dimension_);
    if (has(point)) {
        copy_floats(value.data(), values_.data() + rank(point) * dimension_, dimension_);
        return;
    }
    // All that can fail comes first, so that a failure leaves the map as it was.
    if (size() == 0 || point - run_begin_ == run_size_) {
        values_.append(value);
        if (run_size_ == 0)
            begin_run(point, 1);
        else
            ++run_size_;
        return;
    }
    const std::size_t word = point / 64u;
    scatter(word + 1);
    if (point >= scattered_end_) {
        values_.append(value);
        scattered_end_ = point + 1;
    } else {
        values_.insert(scattered_rank(point) * dimension_, value);
    }
    present_[word] |= std::uint64_t{1} << (point % 64u);
    for (std::size_t w = word + 1; w < before_.size(); ++w)
        ++before_[w];
    ++scattered_;
}

void VertexMap::append(std::span<const std::uint32_t> points, std::span<const float> values)
{
    if (points.empty())
        return;
    values = values.first(points.size() * dimension_);
    const bool neighbours = points.back() - points.front() == points.size() - 1;
    // All that can fail comes first, so that a failure leaves the map as it was.
    if (neighbours && (size() == 0 || points.front() - run_begin_ == run_size_)) {
        values_.append(values);
        if (run_size_ == 0)
            begin_run(points.front(), points.size());
        else
            run_size_ += static_cast<std::uint32_t>(points.size());
        return;
    }
    values_.reserve_more(values_.size() + values.size());
    scatter(points.back() / 64u + std::size_t{1});
    values_.append(values);
    for (std::size_t i = 0; i < points.size(); ++i) {
        present_[points[i] / 64u] |= std::uint64_t{1} << (points[i] % 64u);
        const std::size_t next = i + 1 < points.size() ? points[i + 1] / 64u : before_.size() - 1;
        ++scattered_;
        for (std::size_t w = points[i] / 64u + std::size_t{1}; w <= next; ++w)
            before_[w] = scattered_;
    }
    scattered_end_ = points.back() + 1;
}

void VertexMap::erase(std::uint32_t point)
{
    if (!has(point))
        return;
    if (point + 1 == end()) {
        truncate(point);
        return;
    }
    scatter(0);
    const std::size_t word = point / 64u;
    values_.erase(scattered_rank(point) * dimension_, dimension_);
    present_[word] &= ~(std::uint64_t{1} << (point % 64u));
    for (std::size_t w = word + 1; w < before_.size(); ++w)
        --before_[w];
    --scattered_;
}

void VertexMap::truncate(std::uint32_t point_count) noexcept
{
    if (point_count >= end())
        return;
    const std::size_t left = rank(point_count);
    values_.truncate(left * dimension_);
    if (run_size_ != 0) {
        run_size_ = static_cast<std::uint32_t>(left);
        if (left == 0)
            run_begin_ = no_run;
        return;
    }
    const std::size_t word = point_count / 64u;
    present_[word] &= (std::uint64_t{1} << (point_count % 64u)) - 1u;
    std::size_t words = word + 1;
    while (words > 0 && present_[words - 1] == 0)
        --words;
    present_.truncate(words);
    before_.truncate(words);
    scattered_ = static_cast<std::uint32_t>(left);
    scattered_end_ = 0;
    if (words > 0)
        scattered_end_ = static_cast<std::uint32_t>(words * 64u) -
                         static_cast<std::uint32_t>(std::countl_zero(present_[words - 1]));
}

} // namespace mesh
