// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "mesh/buffer.h"
#include "mesh/floats.h"
#include "mesh/fourcc.h"
#include "mesh/rare.h"

namespace mesh {

constexpr FourCC map_txuv = fourcc("TXUV"); ///< texture coordinates: u, v
constexpr FourCC map_wght = fourcc("WGHT"); ///< weight
constexpr FourCC map_morf = fourcc("MORF"); ///< relative morph: an offset
constexpr FourCC map_mnvw = fourcc("MNVW"); ///< subpatch weight
constexpr FourCC map_spot = fourcc("SPOT"); ///< absolute morph: a position

/// Values of a map that hold for one corner of one polygon only, in the order they came. Row i is
/// polygon `polygons[i]`, point `points[i]` and `dimension` floats from `values[i * dimension]`.
struct CornerValues {
    Buffer<std::uint32_t> polygons;
    Buffer<std::uint32_t> points;
    Buffer<float> values;

    [[nodiscard]] std::size_t size() const noexcept { return polygons.size(); }
};

/// One vertex map of a layer: for each point a vector of `dimension` floats, or no value.
///
/// The values stand packed in ascending order of their points. Mostly these are one run of
/// neighbours, as in a full map, and where the run begins and how long it is says which points have
/// a value. Points that are not are found through presence bits, a word for each 64 points of which
/// some have a value, and a running count for each word: a map of few points costs little more than
/// its values, wherever in the layer they are. Adding behind the last point that has a value takes
/// constant time; so does finding a value where no word is missing in between, and else a search
/// among the words. Adding before the last moves what follows.
class VertexMap {
public:
    VertexMap(FourCC type, std::string name, std::size_t dimension)
        : type_(type), dimension_(static_cast<std::uint32_t>(dimension)), name_(std::move(name))
    {}

    [[nodiscard]] FourCC type() const noexcept { return type_; }
    /// The name's bytes as they stand in the file.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Floats for each value; 0 for a set of points.
    [[nodiscard]] std::size_t dimension() const noexcept { return dimension_; }
    /// Number of points that have a value.
    [[nodiscard]] std::size_t size() const noexcept { return run_size_ + scattered_->size; }

    [[nodiscard]] bool has(std::uint32_t point) const noexcept
    {
        return lies_in_run(point) || (scattered_.is_there() && is_scattered(point));
    }

    /// How many of the points from `begin` on that lie before `end` have a value.
    [[nodiscard]] std::size_t count_in(std::uint32_t begin, std::uint32_t end) const noexcept
    {
        const std::size_t before_end = rank(end);
        const std::size_t before_begin = rank(begin);
        return before_end > before_begin ? before_end - before_begin : 0;
    }

    /// The point's value, `dimension` floats, valid until the map changes; empty when it has none
    /// (`has` tells the two apart where the dimension is 0).
    [[nodiscard]] std::span<const float> find(std::uint32_t point) const noexcept
    {
        if (!has(point))
            return {};
        return {values_.data() + rank(point) * dimension_, dimension_};
    }

    /// The point's value where the points that have one are a run of neighbours; null where `find`
    /// has to tell, and for numbers that no point has.
    [[nodiscard]] const float* find_in_run(std::uint64_t point) const noexcept
    {
        const std::uint64_t row = point - run_begin_;
        return row < run_size_ ? values_.data() + row * dimension_ : nullptr;
    }

    /// Gives the point a value of `dimension` floats, in place of one it may have.
    void set(std::uint32_t point, std::span<const float> value)
    {
        if (!extend_run(point, value))
            set_anywhere(point, value);
    }

    /// The same where it costs nothing: the points that have a value are a run of neighbours, this
    /// one comes next, and there is room for one more value. False: nothing was done.
    [[nodiscard]] bool extend_run(std::uint32_t point, std::span<const float> value) noexcept
    {
        if (point - run_begin_ != run_size_ || values_.room() < value.size())
            return false;
        copy_floats(value.data(), values_.extend(value.size()), value.size());
        ++run_size_;
        return true;
    }

    /// Gives points their values in one go: the points ascend, the first of them behind all that
    /// have a value; `values` are `dimension` floats for each, one after another.
    void append(std::span<const std::uint32_t> points, std::span<const float> values);

    /// Takes the point's value away. Asks for memory where this divides a run of neighbours.
    void erase(std::uint32_t point);

    /// Takes the values of all points from `point_count` on away.
    void truncate(std::uint32_t point_count) noexcept;

    /// All values, packed in ascending order of the points that have one.
    [[nodiscard]] std::span<const float> values() const noexcept { return values_.span(); }

    /// Calls `visit(point, value)` for each point that has a value, in ascending order.
    template <typename Visit> void for_each(Visit visit) const { for_each_in(0, end(), visit); }

    /// The same for the points from `begin` on that lie before `end`, in time that does not grow
    /// with the others.
    template <typename Visit>
    void for_each_in(std::uint32_t begin, std::uint32_t end, Visit visit) const
    {
        if (run_size_ != 0)
            visit_run(begin, end, visit);
        else
            visit_scattered(begin, end, visit);
    }

    /// Values for single corners; they stand beside those of the points.
    [[nodiscard]] const CornerValues& corners() const noexcept { return *corners_; }
    [[nodiscard]] CornerValues& edit_corners() { return corners_.make(); }

    /// One past the last point that has a value; 0 where none has.
    [[nodiscard]] std::uint32_t end() const noexcept
    {
        return run_size_ != 0 ? run_begin_ + run_size_ : scattered_->end;
    }

private:
    /// Where a run begins that is none: no point has this index.
    static constexpr std::uint32_t no_run = 0xFFFFFFFFu;

    [[nodiscard]] bool lies_in_run(std::uint32_t point) const noexcept
    {
        return point - run_begin_ < run_size_; // a point before the run wraps around
    }
    /// Number of points before `point` that have a value.
    [[nodiscard]] std::size_t rank(std::uint32_t point) const noexcept
    {
        if (point >= end())
            return size();
        if (run_size_ != 0)
            return point > run_begin_ ? point - run_begin_ : 0;
        return scattered_rank(point);
    }
    [[nodiscard]] bool is_scattered(std::uint32_t point) const noexcept;
    [[nodiscard]] std::size_t scattered_rank(std::uint32_t point) const noexcept;

    template <typename Visit>
    void visit_run(std::uint32_t begin, std::uint32_t end, Visit& visit) const
    {
        const std::size_t last_row = rank(end);
        for (std::size_t row = rank(begin); row < last_row; ++row)
            visit(run_begin_ + static_cast<std::uint32_t>(row), value_in(row));
    }
    template <typename Visit>
    void visit_scattered(std::uint32_t begin, std::uint32_t end, Visit& visit) const
    {
        const Scattered& points = *scattered_;
        if (begin >= std::min(end, points.end))
            return;
        std::size_t row = scattered_rank(begin);
        for (std::size_t i = points.place_of(begin / 64u); i < points.words.size(); ++i) {
            const std::uint32_t first = points.words[i] * 64u;
            std::uint64_t bits = points.present[i];
            if (first < begin)
                bits &= ~std::uint64_t{0} << (begin - first);
            for (; bits != 0; bits &= bits - 1, ++row) {
                const std::uint32_t point =
                    first + static_cast<std::uint32_t>(std::countr_zero(bits));
                if (point >= end)
                    return;
                visit(point, value_in(row));
            }
        }
    }
    [[nodiscard]] std::span<const float> value_in(std::size_t row) const noexcept
    {
        return {values_.data() + row * dimension_, dimension_};
    }

    void set_anywhere(std::uint32_t point, std::span<const float> value);
    /// Makes the map, in which no point has a value, a run of `count` from `point` on.
    void begin_run(std::uint32_t point, std::size_t count) noexcept;
    /// Takes the points for scattered ones, with room for `more` further words.
    void scatter(std::size_t more);

    /// Points that are no run.
    struct Scattered {
        std::uint32_t size = 0;        ///< how many have a value
        std::uint32_t end = 0;         ///< one past the last of them
        Buffer<std::uint32_t> words;   ///< ascending: some of the points from 64 times this on
        Buffer<std::uint64_t> present; ///< for each word: bit p % 64: point p has a value
        Buffer<std::uint32_t> before;  ///< for each word: how many points before it have a value

        /// Where a word stands, or would stand, among the words.
        [[nodiscard]] std::size_t place_of(std::uint32_t word) const noexcept;
    };

    FourCC type_;
    std::uint32_t dimension_;
    std::string name_;
    // Either a run, or scattered points.
    std::uint32_t run_begin_ = no_run;
    std::uint32_t run_size_ = 0;
    Rare<Scattered> scattered_;
    Buffer<float> values_;
    Rare<CornerValues> corners_;
};

} // namespace mesh
