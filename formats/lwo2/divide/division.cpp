// SPDX-License-Identifier: MIT
#include "formats/lwo2/divide/division.h"

#include <algorithm>
#include <optional>

#include <fmt/format.h>

#include "formats/errors.h"
#include "formats/lwo2/divide/cuts.h"
#include "formats/lwo2/ids.h"

namespace formats::lwo2 {

namespace {

class Division {
public:
    Division(const Layout& whole, std::uint32_t limit, const std::string& title);

    [[nodiscard]] std::vector<LayerPart> parts();

private:
    void close_places();
    void divide_points(bool count_polygons);
    [[nodiscard]] std::uint32_t end_of_countable(const Range& points) const;
    void place_polygons();
    [[nodiscard]] bool has_too_many_polygons() const;
    [[noreturn]] void refuse(const Range& points) const;

    const LayerPart& whole_;
    const mesh::Layer& layer_;
    std::uint32_t limit_;
    const std::string& title_;
    std::uint32_t file_points_ = 0; ///< points that came from a file
    std::uint32_t block_begin_ = 0; ///< where the file's last block of points begins
    Cuts cuts_;
    std::vector<LayerPart> parts_;
};

Division::Division(const Layout& whole, std::uint32_t limit, const std::string& title)
    : whole_(whole.part()), layer_(*whole_.layer), limit_(limit), title_(title),
      cuts_(whole_.points.end)
{
    for (const mesh::FileChunk& chunk : layer_.chunks) {
        if (chunk.role != mesh::ChunkRole::points)
            continue;
        block_begin_ = file_points_;
        file_points_ = std::clamp(chunk.end, file_points_, whole_.points.end);
    }
}

void Division::close_places()
{
    const mesh::Polygons& polygons = layer_.polygons;
    if (file_points_ > 0)
        cuts_.join(0, file_points_ - 1);
    for (std::size_t p = 0; p < polygons.size(); ++p) {
        const auto points = polygons.points(p);
        std::uint32_t low = points.front();
        std::uint32_t high = low;
        for (const std::uint32_t point : points) {
            low = std::min(low, point);
            high = std::max(high, point);
        }
        cuts_.join(low, high);
    }
    // a corner value refers to a point and a polygon, so both must be in the same part
    for (const mesh::VertexMap& map : layer_.maps)
        for (std::size_t row = 0; row < map.corners().size(); ++row)
            if (map.corners().points[row] < layer_.points.size() &&
                map.corners().polygons[row] < polygons.size())
                cuts_.join(map.corners().points[row],
                           polygons.points(map.corners().polygons[row]).front());
    cuts_.finish();
}

void Division::refuse(const Range& points) const
{
    throw LimitError(fmt::format(
        "{}: points {} to {} and their polygons are more than the {} that one layer of LWO2 can "
        "number, and there is no place to divide them at which no polygon would be cut; make fewer "
        "clones, or spread them over several layers or files",
        title_, points.begin, points.end - 1, limit_));
}

/// Divides the points into parts that are as large as possible.
/// @param count_polygons  also limit the polygons of each part, which is slower
void Division::divide_points(bool count_polygons)
{
    parts_.clear();
    Range rest = whole_.points;
    std::uint32_t count_from = block_begin_;
    for (;;) {
        const std::uint32_t most = std::min(rest.end - count_from, limit_);
        std::uint32_t end = count_from + most;
        if (count_polygons)
            end = end_of_countable({rest.begin, end});
        if (end == rest.end)
            break;
        const auto place = cuts_.last_in({rest.begin + 1, end + 1});
        if (!place)
            refuse({rest.begin, end + 1});
        parts_.push_back({.layer = &layer_, .points = {rest.begin, *place}});
        rest.begin = *place;
        count_from = rest.begin;
    }
    parts_.push_back({.layer = &layer_, .points = rest});
}

/// The end of the longest prefix of a range whose points start at most `limit` polygons.
std::uint32_t Division::end_of_countable(const Range& points) const
{
    std::vector<std::uint32_t> begun(points.size(), 0);
    for (std::size_t p = 0; p < layer_.polygons.size(); ++p) {
        const std::uint32_t point = layer_.polygons.points(p).front();
        if (point >= points.begin && point < points.end)
            ++begun[point - points.begin];
    }
    std::uint64_t count = 0;
    for (std::uint32_t i = 0; i < points.size(); ++i) {
        count += begun[i];
        if (count > limit_)
            return points.begin + i;
    }
    return points.end;
}

/// Assigns the polygons to the parts of their points.
void Division::place_polygons()
{
    const auto count = static_cast<std::uint32_t>(layer_.polygons.size());
    auto part = parts_.begin();
    for (std::uint32_t p = 0; p < count; ++p) {
        const std::uint32_t point = layer_.polygons.points(p).front();
        if (point < part->points.begin || point >= part->points.end)
            part = std::upper_bound(
                parts_.begin(), parts_.end(), point,
                [](std::uint32_t at, const LayerPart& other) { return at < other.points.end; });
        append(part->polygons, p);
    }
}

bool Division::has_too_many_polygons() const
{
    return std::any_of(parts_.begin(), parts_.end(), [this](const LayerPart& part) {
        std::uint64_t count = 0;
        for (const Range& range : part.polygons)
            count += range.size();
        return count > limit_;
    });
}

std::vector<LayerPart> Division::parts()
{
    close_places();
    divide_points(false);
    place_polygons();
    if (has_too_many_polygons()) {
        divide_points(true);
        place_polygons();
    }
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        parts_[i].is_first = i == 0;
        parts_[i].name = whole_.name;
        parts_[i].number = whole_.number;
    }
    return std::move(parts_);
}

} // namespace

std::vector<LayerPart> divide(const Layout& whole, std::uint32_t limit, const std::string& title)
{
    return Division(whole, limit, title).parts();
}

PartNames::PartNames(const mesh::Document& document) : taken_(no_parent, false)
{
    const auto take = [&](std::uint16_t number) {
        if (number == no_parent)
            return;
        taken_[number] = true;
        next_ = std::max<std::size_t>(next_, number + std::size_t{1});
    };
    for (const mesh::Layer& layer : document.layers) {
        take(layer.number);
        if (layer.parent)
            take(*layer.parent); // else a layer that is not there would seem to be
    }
}

void PartNames::name(std::vector<LayerPart>& parts, const std::string& title)
{
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const auto from_next = taken_.begin() + static_cast<std::ptrdiff_t>(next_);
        auto free = std::find(from_next, taken_.end(), false);
        if (free == taken_.end()) {
            free = std::find(taken_.begin(), from_next, false);
            if (free == from_next)
                throw LimitError(fmt::format("{}: there is no number left for a further layer; "
                                             "use fewer layers",
                                             title));
        }
        const std::string& name = parts[0].name;
        parts[i].name = fmt::format("{}{}({})", name, name.empty() ? "" : " ", i + 1);
        *free = true;
        next_ = static_cast<std::size_t>(free - taken_.begin());
        parts[i].number = static_cast<std::uint16_t>(next_++);
    }
}

} // namespace formats::lwo2
