// SPDX-License-Identifier: MIT
#include "formats/surface_looks.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <unordered_set>

#include "formats/lwo2/chunks.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/join/references.h"

namespace formats {

namespace {

using Bytes = std::span<const std::byte>;

/// A big-endian number of `size` bytes.
std::uint32_t number(Bytes bytes, std::size_t at, std::size_t size)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; ++i)
        value = value << 8u | std::to_integer<std::uint32_t>(bytes[at + i]);
    return value;
}

std::optional<float> single(Bytes bytes, std::size_t at)
{
    if (bytes.size() < at + 4)
        return std::nullopt;
    const auto value = std::bit_cast<float>(number(bytes, at, 4));
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

void read_part(mesh::FourCC id, Bytes body, mesh::SurfaceLook& look)
{
    if (id == mesh::fourcc("COLR")) {
        const auto red = single(body, 0);
        const auto green = single(body, 4);
        const auto blue = single(body, 8);
        if (red && green && blue) {
            look.red = *red;
            look.green = *green;
            look.blue = *blue;
        }
    } else if (id == mesh::fourcc("SMAN")) {
        look.smoothing_angle = static_cast<double>(single(body, 0).value_or(0.0F));
    }
}

/// Iterates over the sub-chunks: id, two-byte size, body, padding byte after a body of odd size.
void read_parts(Bytes rest, mesh::SurfaceLook& look)
{
    constexpr std::size_t header = 6;
    while (rest.size() >= header) {
        const mesh::FourCC id = number(rest, 0, 4);
        const std::size_t size = number(rest, 4, 2);
        rest = rest.subspan(header);
        if (size > rest.size())
            return;
        read_part(id, rest.first(size), look);
        rest = rest.subspan(std::min(rest.size(), size + size % 2));
    }
}

} // namespace

std::vector<mesh::SurfaceLook> surface_looks(const mesh::Document& document)
{
    std::vector<mesh::SurfaceLook> looks;
    std::unordered_set<std::string> known;
    lwo2::for_each_chunk(document, [&](const mesh::FileChunk& chunk) {
        if (chunk.id != lwo2::id_surf)
            return;
        const auto head = lwo2::surface_head(chunk.body);
        if (!head || !known.insert(head->name).second)
            return;
        mesh::SurfaceLook look;
        look.name = head->name;
        read_parts(head->rest, look);
        looks.push_back(std::move(look));
    });
    return looks;
}

} // namespace formats
