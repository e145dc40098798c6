// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/map_builder.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

#include "formats/lwo2/ids.h"

namespace formats::lwo2 {

std::uint32_t MapBuilder::number(mesh::FourCC type, const std::string& name,
                                 std::uint16_t dimension)
{
    std::string key = name;
    for (unsigned shift = 0; shift < 32; shift += 8)
        key += static_cast<char>((type >> shift) & 0xFFu);
    key += static_cast<char>(dimension & 0xFFu);
    key += static_cast<char>(dimension >> 8u);
    const auto [found, added] =
        numbers_.try_emplace(std::move(key), static_cast<std::uint32_t>(maps_.size()));
    if (added)
        maps_.push_back({.map = mesh::VertexMap(type, name, dimension)});
    return found->second;
}

void MapBuilder::add(std::uint32_t map, std::span<const std::uint32_t> points,
                     std::span<const float> values)
{
    if (points.empty())
        return;
    Entry& entry = maps_[map];
    const bool in_order =
        entry.late_points.empty() && points.front() >= entry.next &&
        std::adjacent_find(points.begin(), points.end(), std::greater_equal<>()) == points.end();
    if (in_order) {
        entry.map.append(points, values);
        entry.next = points.back() + 1;
        return;
    }
    const std::size_t dimension = entry.map.dimension();
    for (std::size_t row = 0; row < points.size(); ++row) {
        const std::uint32_t point = points[row];
        const auto value = values.subspan(row * dimension, dimension);
        if (point >= entry.next && entry.late_points.empty()) {
            entry.map.append({&point, 1}, value);
            entry.next = point + 1;
            continue;
        }
        entry.late_end = std::max(entry.late_end, point + 1);
        entry.late_points.push_back(point);
        entry.late_values.append(value);
    }
}

void MapBuilder::account(std::uint32_t map, std::uint64_t offset, const Cursor& at)
{
    Entry& entry = maps_[map];
    entry.offset = offset;
    const std::uint32_t end = std::max(entry.next, entry.late_end);
    if (end <= entry.accounted)
        return;
    // for each 64 points the map keeps a word of presence bits and a running count
    constexpr std::uint64_t bytes_a_word = 12;
    reading_.claim((end / 64u + 1 - entry.accounted / 64u) * bytes_a_word, at);
    entry.accounted = end;
}

std::deque<mesh::VertexMap> MapBuilder::finish()
{
    std::deque<mesh::VertexMap> maps;
    for (Entry& entry : maps_) {
        if (!entry.late_points.empty())
            merge_late(entry);
        maps.push_back(std::move(entry.map));
    }
    maps_.clear();
    numbers_.clear();
    return maps;
}

void MapBuilder::merge_late(Entry& entry)
{
    const auto& points = entry.late_points;
    std::vector<std::uint32_t> order(points.size());
    std::iota(order.begin(), order.end(), std::uint32_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return points[a] < points[b]; });

    const std::size_t dimension = entry.map.dimension();
    mesh::VertexMap merged(entry.map.type(), entry.map.name(), dimension);
    std::size_t repeated = 0;
    std::size_t at = 0;
    const auto take_up_to = [&](std::uint64_t end) {
        for (; at < order.size() && points[order[at]] < end; ++at) {
            const std::uint32_t point = points[order[at]];
            if (merged.has(point))
                ++repeated;
            merged.set(point, {entry.late_values.data() + order[at] * dimension, dimension});
        }
    };
    entry.map.for_each([&](std::uint32_t point, std::span<const float> value) {
        take_up_to(point);
        merged.set(point, value);
    });
    take_up_to(std::uint64_t{1} << 32u);

    if (repeated > 0)
        reading_.warn(id_vmap, entry.offset,
                      fmt::format("map {} \"{}\" gives {} points a value more than once; the last "
                                  "one counts",
                                  mesh::to_text(entry.map.type()), entry.map.name(), repeated));
    merged.corners = std::move(entry.map.corners);
    entry.map = std::move(merged);
}

} // namespace formats::lwo2
