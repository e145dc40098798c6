// SPDX-License-Identifier: MIT
#include "cli/commands/mesh_text.h"

#include <bit>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>

#include <fmt/format.h>

#include "mesh/printable.h"

namespace cli {

namespace {

/// Buffers lines and passes them on in large blocks.
class Lines {
public:
    explicit Lines(const std::function<void(std::string_view)>& write) : write_(write) {}

    template <typename... Values> void add(fmt::format_string<Values...> format, Values&&... values)
    {
        fmt::format_to(std::back_inserter(text_), format, std::forward<Values>(values)...);
        if (text_.size() >= run)
            flush();
    }

    void flush()
    {
        write_({text_.data(), text_.size()});
        text_.clear();
    }

private:
    static constexpr std::size_t run = 1u << 18;

    const std::function<void(std::string_view)>& write_;
    fmt::memory_buffer text_;
};

/// Formats a NaN with its payload, which is part of the mesh.
template <std::floating_point Number> std::string number_text(Number number)
{
    if (!std::isnan(number))
        return fmt::format("{}", number);
    if constexpr (sizeof(Number) == sizeof(std::uint32_t))
        return fmt::format("nan:{:08x}", std::bit_cast<std::uint32_t>(number));
    else
        return fmt::format("nan:{:016x}", std::bit_cast<std::uint64_t>(number));
}

std::string quoted(std::string_view text)
{
    std::string escaped;
    for (const char character : text) {
        if (character == '"' || character == '\\')
            escaped += '\\';
        escaped += character;
    }
    return '"' + mesh::printable(escaped) + '"';
}

std::uint64_t fnv1a(std::span<const std::byte> bytes)
{
    std::uint64_t sum = 0xCBF29CE484222325u;
    for (const std::byte byte : bytes)
        sum = (sum ^ std::to_integer<std::uint64_t>(byte)) * 0x100000001B3u;
    return sum;
}

std::string values_text(std::span<const float> values)
{
    std::string text;
    for (const float value : values)
        text += " " + number_text(value);
    return text;
}

void add_chunks(Lines& lines, std::string_view place, const std::vector<mesh::FileChunk>& chunks)
{
    for (const mesh::FileChunk& chunk : chunks) {
        if (chunk.role == mesh::ChunkRole::opaque)
            lines.add("{} chunk {} size {} sum {:016x}\n", place, mesh::to_text(chunk.id),
                      chunk.body.size(), fnv1a(chunk.body));
    }
}

void add_polygons(Lines& lines, const mesh::Polygons& polygons, const mesh::TagList& tags)
{
    lines.add("polygons {}\n", polygons.size());
    const std::vector<mesh::FourCC> kinds = polygons.other_tag_kinds();
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        std::string text = mesh::to_text(polygons.type(i));
        for (const std::uint32_t point : polygons.points(i))
            text += fmt::format(" {}", point);
        if (polygons.flags(i) != 0)
            text += fmt::format(" flags {}", polygons.flags(i));
        if (polygons.surface(i) != mesh::no_tag)
            text += " SURF " + quoted(tags[polygons.surface(i)]);
        for (const mesh::FourCC kind : kinds) {
            if (const mesh::TagIndex tag = polygons.tag(kind, i); tag != mesh::no_tag)
                text += fmt::format(" {} {}", mesh::to_text(kind), quoted(tags[tag]));
        }
        lines.add("  {} {}\n", i, text);
    }
}

void add_map(Lines& lines, const mesh::VertexMap& map)
{
    lines.add("map {} {} dimension {} values {}\n", mesh::to_text(map.type()), quoted(map.name()),
              map.dimension(), map.size());
    map.for_each([&](std::uint32_t point, std::span<const float> value) {
        lines.add("  {}{}\n", point, values_text(value));
    });
    const mesh::CornerValues& corners = map.corners();
    if (corners.size() != 0)
        lines.add("corner values {}\n", corners.size());
    for (std::size_t i = 0; i < corners.size(); ++i)
        lines.add("  polygon {} point {}{}\n", corners.polygons[i], corners.points[i],
                  values_text(corners.values.span().subspan(i * map.dimension(), map.dimension())));
}

void add_layer(Lines& lines, const mesh::Layer& layer, const mesh::TagList& tags)
{
    lines.add("layer {} {} flags {} pivot {} {} {} parent {}\n", layer.number, quoted(layer.name),
              layer.flags, number_text(layer.pivot.x), number_text(layer.pivot.y),
              number_text(layer.pivot.z), layer.parent ? fmt::format("{}", *layer.parent) : "none");
    lines.add("points {}\n", layer.points.size());
    for (std::size_t i = 0; i < layer.points.size(); ++i) {
        const mesh::Vec3& point = layer.points[i];
        lines.add("  {} {} {} {}\n", i, number_text(point.x), number_text(point.y),
                  number_text(point.z));
    }
    add_polygons(lines, layer.polygons, tags);
    for (const mesh::VertexMap& map : layer.maps)
        add_map(lines, map);
    add_chunks(lines, "layer", layer.chunks);
}

} // namespace

void write_mesh_text(const mesh::Document& document,
                     const std::function<void(std::string_view)>& write)
{
    Lines lines(write);
    lines.add("mesh {} layers\n", document.layers.size());
    lines.add("tags {}\n", document.tags.size());
    for (mesh::TagIndex i = 0; i < document.tags.size(); ++i)
        lines.add("  {} {}\n", i, quoted(document.tags[i]));
    add_chunks(lines, "head", document.head);
    for (const mesh::Layer& layer : document.layers)
        add_layer(lines, layer, document.tags);
    add_chunks(lines, "tail", document.tail);
    lines.flush();
}

} // namespace cli
