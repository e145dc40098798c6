// SPDX-License-Identifier: MIT
#include "mesh/vertex_map.h"

#include <bit>
#include <utility>

namespace mesh {

namespace {

/// The 64 presence bits of the points from `first` on, if the points in [begin, end) have a value.
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

std::uint64_t bit_of(std::uint32_t point) noexcept { return std::uint64_t{1} << (point % 64u); }

} // namespace

/// Word numbers are distinct and ascending, so the distance to the first and to the last word
/// bounds the index. Without missing words the bounds coincide; otherwise a binary search follows.
std::size_t VertexMap::Scattered::place_of(std::uint32_t word) const noexcept
{
    const std::size_t count = words.size();
    if (count == 0 || word <= words[0])
        return 0;
    if (word > words.back())
        return count;
    const std::size_t last = std::min<std::size_t>(word - words[0], count - 1);
    if (words[last] == word)
        return last;
    const std::size_t to_last = words.back() - word;
    const std::size_t first = to_last < count ? count - 1 - to_last : 0;
    return static_cast<std::size_t>(
        std::lower_bound(words.begin() + first, words.begin() + last, word) - words.begin());
}

bool VertexMap::is_scattered(std::uint32_t point) const noexcept
{
    const Scattered& points = *scattered_;
    const std::size_t at = points.place_of(point / 64u);
    return at < points.words.size() && points.words[at] == point / 64u &&
           (points.present[at] & bit_of(point)) != 0;
}

std::size_t VertexMap::scattered_rank(std::uint32_t point) const noexcept
{
    const Scattered& points = *scattered_;
    const std::size_t at = points.place_of(point / 64u);
    if (at == points.words.size())
        return points.size;
    const std::uint64_t below = points.words[at] == point / 64u ? bit_of(point) - 1u : 0;
    return points.before[at] + static_cast<std::size_t>(std::popcount(points.present[at] & below));
}

void VertexMap::begin_run(std::uint32_t point, std::size_t count) noexcept
{
    scattered_.reset();
    run_begin_ = point;
    run_size_ = static_cast<std::uint32_t>(count);
}

void VertexMap::scatter(std::size_t more)
{
    const std::uint64_t run_end = run_size_ != 0 ? end() : 0;
    const std::uint64_t run_begin = run_size_ != 0 ? run_begin_ : 0;
    if (run_size_ != 0)
        more += (run_end - 1) / 64u - run_begin / 64u + 1;
    // Everything that can throw comes first, so that the map is unchanged on failure.
    Scattered& points = scattered_.get_or_create();
    points.words.reserve_more(points.words.size() + more);
    points.present.reserve_more(points.words.size() + more);
    points.before.reserve_more(points.words.size() + more);
    if (run_size_ == 0)
        return;
    for (std::uint64_t first = run_begin / 64u * 64u; first < run_end; first += 64) {
        points.words.push_back(static_cast<std::uint32_t>(first / 64u));
        points.before.push_back(first > run_begin ? static_cast<std::uint32_t>(first - run_begin)
                                                  : 0u);
        points.present.push_back(bits_between(run_begin, run_end, first));
    }
    points.size = std::exchange(run_size_, 0u);
    points.end = static_cast<std::uint32_t>(run_end);
    run_begin_ = no_run;
}

void VertexMap::set_slow(std::uint32_t point, std::span<const float> value)
{
    value = value.first(dimension_);
    if (Scattered* const points = scattered_.get();
        points != nullptr && points->size != 0 && point >= points->end) {
        // Behind all others, as when clones of a model with sparse maps are added.
        const std::uint32_t word = point / 64u;
        values_.reserve_more(values_.size() + dimension_);
        if (points->words.back() != word) {
            const std::size_t count = points->words.size() + 1;
            points->words.reserve_more(count);
            points->present.reserve_more(count);
            points->before.reserve_more(count);
            points->words.push_back(word);
            points->present.push_back(0u);
            points->before.push_back(points->size);
        }
        values_.append(value);
        points->present.back() |= bit_of(point);
        ++points->size;
        points->end = point + 1;
        return;
    }
    if (has(point)) {
        copy_floats(value.data(), values_.data() + rank(point) * dimension_, dimension_);
        return;
    }
    // Everything that can throw comes first, so that the map is unchanged on failure.
    if (size() == 0 || point - run_begin_ == run_size_) {
        values_.append(value);
        if (run_size_ == 0)
            begin_run(point, 1);
        else
            ++run_size_;
        return;
    }
    values_.reserve_more(values_.size() + dimension_);
    scatter(1);
    Scattered& points = scattered_.get_or_create();
    const std::uint32_t row = static_cast<std::uint32_t>(scattered_rank(point));
    const std::uint32_t word = point / 64u;
    std::size_t at = points.place_of(word);
    if (at == points.words.size() || points.words[at] != word) {
        constexpr std::uint64_t none = 0;
        points.words.insert(at, {&word, 1});
        points.present.insert(at, {&none, 1});
        points.before.insert(at, {&row, 1});
    }
    values_.insert(row * std::size_t{dimension_}, value);
    points.present[at] |= bit_of(point);
    while (++at < points.before.size())
        ++points.before[at];
    ++points.size;
    points.end = std::max(points.end, point + 1);
}

void VertexMap::append(std::span<const std::uint32_t> points, std::span<const float> values)
{
    if (points.empty())
        return;
    values = values.first(points.size() * dimension_);
    const bool neighbours = points.back() - points.front() == points.size() - 1;
    // Everything that can throw comes first, so that the map is unchanged on failure.
    if (neighbours && (size() == 0 || points.front() - run_begin_ == run_size_)) {
        values_.append(values);
        if (run_size_ == 0)
            begin_run(points.front(), points.size());
        else
            run_size_ += static_cast<std::uint32_t>(points.size());
        return;
    }
    values_.reserve_more(values_.size() + values.size());
    scatter(std::min<std::size_t>(points.size(),
                                  points.back() / 64u - points.front() / 64u + std::size_t{1}));
    values_.append(values);
    Scattered& all = scattered_.get_or_create();
    for (const std::uint32_t point : points) {
        if (all.words.empty() || all.words.back() != point / 64u) {
            all.words.push_back(point / 64u);
            all.present.push_back(0);
            all.before.push_back(all.size);
        }
        all.present.back() |= bit_of(point);
        ++all.size;
    }
    all.end = points.back() + 1;
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
    Scattered& points = scattered_.get_or_create();
    std::size_t at = points.place_of(point / 64u);
    values_.erase(scattered_rank(point) * dimension_, dimension_);
    points.present[at] &= ~bit_of(point);
    if (points.present[at] == 0) {
        points.words.erase(at, 1);
        points.present.erase(at, 1);
        points.before.erase(at, 1);
    } else {
        ++at;
    }
    for (; at < points.before.size(); ++at)
        --points.before[at];
    --points.size;
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
    Scattered* const scattered = scattered_.get(); // not null: the map has values and no run
    Scattered& points = *scattered;
    std::size_t words = points.place_of(point_count / 64u);
    if (words < points.words.size() && points.words[words] == point_count / 64u) {
        points.present[words] &= bit_of(point_count) - 1u;
        words += points.present[words] != 0 ? 1u : 0u;
    }
    points.words.truncate(words);
    points.present.truncate(words);
    points.before.truncate(words);
    points.size = static_cast<std::uint32_t>(left);
    points.end = 0;
    if (words > 0)
        points.end = points.words.back() * 64u + 64u -
                     static_cast<std::uint32_t>(std::countl_zero(points.present.back()));
}

} // namespace mesh
