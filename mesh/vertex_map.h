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
#include "mesh/optional_box.h"

namespace mesh {

constexpr FourCC map_txuv = fourcc("TXUV"); ///< texture coordinates: u, v
constexpr FourCC map_wght = fourcc("WGHT"); ///< weight
constexpr FourCC map_morf = fourcc("MORF"); ///< relative morph: an offset
constexpr FourCC map_mnvw = fourcc("MNVW"); ///< subpatch weight
constexpr FourCC map_spot = fourcc("SPOT"); ///< absolute morph: a position

/// Per-corner (discontinuous) values of a map, in insertion order. Row i applies to point
/// `points[i]` in polygon `polygons[i]`; its value is `dimension` floats from
/// `values[i * dimension]`.
struct CornerValues {
    Buffer<std::uint32_t> polygons;
    Buffer<std::uint32_t> points;
    Buffer<float> values;

    [[nodiscard]] std::size_t size() const noexcept { return polygons.size(); }
};

/// One vertex map of a layer: for each point a vector of `dimension` floats, or no value.
///
/// The values are packed in ascending order of their points. Two representations:
/// - run: the points with a value are contiguous, as in a full map; first point and length suffice.
/// - scattered: a sorted list of 64-bit words of presence bits, one for each 64 points of which any
///   has a value, with a running count per word. Memory is proportional to the number of values.
///
/// Appending behind the last point with a value takes constant time. So does a lookup, except for
/// a binary search over the words where words are missing. Inserting before the last point moves
/// the values behind it.
class VertexMap {
public:
    VertexMap(FourCC type, std::string name, std::size_t dimension)
        : type_(type), dimension_(static_cast<std::uint32_t>(dimension)), name_(std::move(name))
    {}

    [[nodiscard]] FourCC type() const noexcept { return type_; }
    /// Raw bytes of the name.
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Floats per value; 0 for a map that is only a set of points.
    [[nodiscard]] std::size_t dimension() const noexcept { return dimension_; }
    /// Number of points that have a value.
    [[nodiscard]] std::size_t size() const noexcept { return run_size_ + scattered_->size; }

    [[nodiscard]] bool has(std::uint32_t point) const noexcept
    {
        return lies_in_run(point) || (scattered_.has_value() && is_scattered(point));
    }

    /// Number of points in [begin, end) that have a value.
    [[nodiscard]] std::size_t count_in(std::uint32_t begin, std::uint32_t end) const noexcept
    {
        const std::size_t before_end = rank(end);
        const std::size_t before_begin = rank(begin);
        return before_end > before_begin ? before_end - before_begin : 0;
    }

    /// The point's value, `dimension` floats, valid until the map changes; empty when it has none.
    /// For dimension 0 use `has`.
    [[nodiscard]] std::span<const float> find(std::uint32_t point) const noexcept
    {
        if (!has(point))
            return {};
        return {values_.data() + rank(point) * dimension_, dimension_};
    }

    /// Fast lookup: the point's value if the map is a run that contains the point, otherwise null
    /// (then use `find`). Any number is allowed.
    [[nodiscard]] const float* find_in_run(std::uint64_t point) const noexcept
    {
        const std::uint64_t row = point - run_begin_;
        return row < run_size_ ? values_.data() + row * dimension_ : nullptr;
    }

    /// Sets or replaces the point's value, `dimension` floats. @throws std::bad_alloc
    void set(std::uint32_t point, std::span<const float> value)
    {
        if (!extend_run(point, value))
            set_slow(point, value);
    }

    /// Fast path of `set`: appends the value if the map is a run, `point` comes next in it, and
    /// there is spare capacity. Otherwise returns false and does nothing.
    [[nodiscard]] bool extend_run(std::uint32_t point, std::span<const float> value) noexcept
    {
        if (point - run_begin_ != run_size_ || values_.spare_capacity() < value.size())
            return false;
        copy_floats(value.data(), values_.extend(value.size()), value.size());
        ++run_size_;
        return true;
    }

    /// Appends the values of several points, `dimension` floats each. The points ascend, and the
    /// first one lies behind all points that have a value. @throws std::bad_alloc
    void append(std::span<const std::uint32_t> points, std::span<const float> values);

    /// Removes the point's value. @throws std::bad_alloc when this splits a run
    void erase(std::uint32_t point);

    /// Removes the values of the points from index `point_count` on.
    void truncate(std::uint32_t point_count) noexcept;

    /// All values, packed in ascending order of the points that have one.
    [[nodiscard]] std::span<const float> values() const noexcept { return values_.span(); }

    /// Calls `visit(point, value)` for each point that has a value, in ascending order.
    template <typename Visit> void for_each(Visit visit) const { for_each_in(0, end(), visit); }

    /// Calls `visit(point, value)` for each point in [begin, end) that has a value, in ascending
    /// order. Takes no time for other points.
    template <typename Visit>
    void for_each_in(std::uint32_t begin, std::uint32_t end, Visit visit) const
    {
        if (run_size_ != 0)
            visit_run(begin, end, visit);
        else
            visit_scattered(begin, end, visit);
    }

    /// Per-corner values, independent of the point values.
    [[nodiscard]] const CornerValues& corners() const noexcept { return *corners_; }
    [[nodiscard]] CornerValues& edit_corners() { return corners_.get_or_create(); }

    /// One past the last point that has a value; 0 if none has.
    [[nodiscard]] std::uint32_t end() const noexcept
    {
        return run_size_ != 0 ? run_begin_ + run_size_ : scattered_->end;
    }

private:
    /// `run_begin_` of a map that is no run: not a valid point index.
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

    void set_slow(std::uint32_t point, std::span<const float> value);
    /// Turns an empty map into a run of `count` points from `point` on.
    void begin_run(std::uint32_t point, std::size_t count) noexcept;
    /// Converts a run to scattered points, with capacity for `more` further words.
    void scatter(std::size_t more);

    /// Presence bits of points that are not one contiguous run.
    struct Scattered {
        std::uint32_t size = 0;        ///< number of points with a value
        std::uint32_t end = 0;         ///< one past the last point with a value
        Buffer<std::uint32_t> words;   ///< word numbers (point / 64), ascending
        Buffer<std::uint64_t> present; ///< per word: bit p % 64 is set if point p has a value
        Buffer<std::uint32_t> before;  ///< per word: number of preceding points with a value

        /// Index of a word number in `words`, or where it would be inserted.
        [[nodiscard]] std::size_t place_of(std::uint32_t word) const noexcept;
    };

    FourCC type_;
    std::uint32_t dimension_;
    std::string name_;
    // Either run_* or scattered_ is in use.
    std::uint32_t run_begin_ = no_run;
    std::uint32_t run_size_ = 0;
    OptionalBox<Scattered> scattered_;
    Buffer<float> values_;
    OptionalBox<CornerValues> corners_;
};

} // namespace mesh
