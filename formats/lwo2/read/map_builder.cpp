// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/map_builder.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <string>
#include <utility>

#include "formats/lwo2/ids.h"
#include "mesh/plural.h"

namespace formats::lwo2 {

namespace {

std::size_t hash_of(mesh::FourCC type, std::string_view name, std::size_t dimension)
{
    constexpr std::size_t odd = 0x9E3779B97F4A7C15u; // spreads the bits
    return (std::hash<std::string_view>()(name) ^ type * odd) + dimension * odd;
}

} // namespace

std::size_t MapBuilder::place_of(mesh::FourCC type, std::string_view name,
                                 std::size_t dimension) const
{
    const std::size_t last = table_.size() - 1;
    std::size_t place = hash_of(type, name, dimension) & last;
    for (; table_[place] != 0; place = (place + 1) & last) {
        const mesh::VertexMap& map = maps_[table_[place] - 1];
        if (map.type() == type && map.dimension() == dimension && map.name() == name)
            break;
    }
    return place;
}

void MapBuilder::grow_table()
{
    if (maps_.size() + 1 <= table_.size() / 4 * 3)
        return;
    constexpr std::size_t least = 16;
    table_.assign(std::max(least, table_.size() * 2), 0);
    std::uint32_t number = 0;
    for (const mesh::VertexMap& map : maps_)
        table_[place_of(map.type(), map.name(), map.dimension())] = ++number;
}

std::uint32_t MapBuilder::number(mesh::FourCC type, std::string_view name, std::uint16_t dimension)
{
    grow_table();
    const std::size_t place = place_of(type, name, dimension);
    if (table_[place] == 0) {
        maps_.emplace_back(type, std::string(name), dimension);
        table_[place] = static_cast<std::uint32_t>(maps_.size());
    }
    return table_[place] - 1;
}

void MapBuilder::add(std::uint32_t number, std::span<const std::uint32_t> points,
                     std::span<const float> values)
{
    if (points.empty())
        return;
    mesh::VertexMap& map = maps_[number];
    const auto found = out_of_order_.empty() ? out_of_order_.end() : out_of_order_.find(number);
    const bool in_order =
        found == out_of_order_.end() && points.front() >= map.end() &&
        std::adjacent_find(points.begin(), points.end(), std::greater_equal<>()) == points.end();
    if (in_order) {
        map.append(points, values);
        return;
    }
    OutOfOrder* late = found == out_of_order_.end() ? nullptr : &found->second;
    const std::size_t dimension = map.dimension();
    for (std::size_t row = 0; row < points.size(); ++row) {
        const std::uint32_t point = points[row];
        const auto value = values.subspan(row * dimension, dimension);
        if (point >= map.end() && late == nullptr) {
            map.append({&point, 1}, value);
            continue;
        }
        if (late == nullptr)
            late = &out_of_order_[number];
        late->points.push_back(point);
        late->values.append(value);
    }
}

void MapBuilder::end_chunk(std::uint32_t map, std::uint64_t offset)
{
    if (const auto late = out_of_order_.find(map); late != out_of_order_.end())
        late->second.offset = offset;
}

void MapBuilder::finish()
{
    // in the order of the maps, which is that of the warnings
    std::vector<std::uint32_t> numbers;
    for (const auto& [number, late] : out_of_order_)
        numbers.push_back(number);
    std::sort(numbers.begin(), numbers.end());
    for (const std::uint32_t number : numbers)
        merge_out_of_order(number, out_of_order_[number]);
}

void MapBuilder::merge_out_of_order(std::uint32_t number, OutOfOrder& late)
{
    mesh::VertexMap& map = maps_[number];
    const auto& points = late.points;
    std::vector<std::uint32_t> order(points.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return points[a] < points[b]; });

    const std::size_t dimension = map.dimension();
    mesh::VertexMap merged(map.type(), map.name(), dimension);
    std::size_t repeated = 0;
    std::size_t at = 0;
    const auto take_up_to = [&](std::uint64_t end) {
        for (; at < order.size() && points[order[at]] < end; ++at) {
            const std::uint32_t point = points[order[at]];
            if (merged.has(point))
                ++repeated;
            merged.set(point, {late.values.data() + order[at] * dimension, dimension});
        }
    };
    map.for_each([&](std::uint32_t point, std::span<const float> value) {
        take_up_to(point);
        merged.set(point, value);
    });
    take_up_to(std::uint64_t{1} << 32u);

    if (repeated > 0)
        reading_.warn(id_vmap, late.offset,
                      fmt::format("map {} \"{}\" gives {} a value more than once; the last "
                                  "one counts",
                                  mesh::to_text(map.type()), map.name(),
                                  mesh::counted(repeated, "point")));
    if (map.corners().size() > 0)
        merged.edit_corners() = std::move(map.edit_corners());
    map = std::move(merged);
    late = {};
}

} // namespace formats::lwo2
