// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mesh/layer.h"

namespace formats::lwo2 {

/// A half-open range [begin, end) of points, polygons or rows.
struct Range {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;

    [[nodiscard]] std::uint32_t size() const noexcept { return end - begin; }
    friend bool operator==(const Range&, const Range&) = default;
};

/// Appends a number to ascending ranges; extends the last range if the number follows it.
inline void append(std::vector<Range>& ranges, std::uint32_t number)
{
    if (!ranges.empty() && ranges.back().end == number)
        ++ranges.back().end;
    else
        ranges.push_back({number, number + 1});
}

/// The part of a document's layer that one layer of the file holds; usually the whole layer.
struct LayerPart {
    const mesh::Layer* layer = nullptr;
    bool is_first = true; ///< the part that keeps the layout of the layer's file
    std::string name = {};
    std::uint16_t number = 0;
    Range points = {};
    std::vector<Range> polygons = {}; ///< ascending; they use points of this part only
};

/// The part that holds a whole layer.
[[nodiscard]] inline LayerPart whole(const mesh::Layer& layer)
{
    LayerPart part{.layer = &layer,
                   .name = layer.name,
                   .number = layer.number,
                   .points = {0, static_cast<std::uint32_t>(layer.points.size())}};
    if (layer.polygons.size() > 0)
        part.polygons.push_back({0, static_cast<std::uint32_t>(layer.polygons.size())});
    return part;
}

} // namespace formats::lwo2
