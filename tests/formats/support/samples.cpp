// SPDX-License-Identifier: MIT
#include "tests/formats/support/samples.h"

#include <cmath>
#include <limits>

namespace test {

Bytes layer_chunk(unsigned number, std::string_view name, unsigned flags)
{
    return chunk("LAYR", Bytes().u2(number).u2(flags).vec(0, 0, 0).text(name));
}

Bytes points_chunk(unsigned count)
{
    Bytes body;
    for (unsigned i = 0; i < count; ++i) {
        const auto v = static_cast<float>(i);
        body.vec(v, 2 * v, -v);
    }
    return chunk("PNTS", body);
}

Bytes box_chunk(unsigned count)
{
    const auto last = static_cast<float>(count - 1);
    return chunk("BBOX", Bytes().vec(0, 0, -last).vec(last, 2 * last, 0));
}

Bytes polygons_chunk(std::string_view type, const std::vector<std::vector<std::uint32_t>>& polygons)
{
    Bytes body;
    body.raw(type);
    for (const auto& points : polygons) {
        body.u2(static_cast<unsigned>(points.size()));
        for (const std::uint32_t point : points)
            body.index(point);
    }
    return chunk("POLS", body);
}

Bytes tags_chunk(std::string_view kind, const std::vector<std::pair<std::uint32_t, unsigned>>& rows)
{
    Bytes body;
    body.raw(kind);
    for (const auto& [polygon, tag] : rows)
        body.index(polygon).u2(tag);
    return chunk("PTAG", body);
}

Bytes surface_chunk(std::string_view name, float grey, std::uint32_t envelope, std::uint32_t image)
{
    Bytes body;
    body.text(name).text("");
    body.add(sub_chunk("COLR", Bytes().vec(grey, grey, grey).index(envelope)));
    body.add(sub_chunk("DIFF", Bytes().f4(1).index(0)));
    if (image != 0) {
        Bytes map;
        map.add(
            sub_chunk("IMAP", Bytes()
                                  .text("\x80")
                                  .add(sub_chunk("CHAN", Bytes().raw("COLR")))
                                  .add(sub_chunk("OPAC", Bytes().u2(0).f4(1).index(envelope)))));
        map.add(sub_chunk("TMAP", sub_chunk("CNTR", Bytes().vec(1, 2, 3).index(envelope))));
        map.add(sub_chunk("PROJ", Bytes().u2(5)));
        map.add(sub_chunk("IMAG", Bytes().index(image)));
        map.add(sub_chunk("VMAP", Bytes().text("uv")));
        body.add(sub_chunk("BLOK", map));
    }
    return chunk("SURF", body);
}

Bytes image_chunk(std::uint32_t number, std::string_view path)
{
    return chunk("CLIP", Bytes().u4(number).add(sub_chunk("STIL", Bytes().text(path))));
}

Bytes envelope_chunk(std::uint32_t number, float value)
{
    return chunk("ENVL", Bytes()
                             .index(number)
                             .add(sub_chunk("TYPE", Bytes().u2(0x0301)))
                             .add(sub_chunk("KEY ", Bytes().f4(0).f4(value))));
}

File triangle()
{
    return form({chunk("TAGS", Bytes().text("Default")), layer_chunk(0), points_chunk(3),
                 box_chunk(3), polygons_chunk("FACE", {{0, 1, 2}}), tags_chunk("SURF", {{0, 0}}),
                 surface_chunk("Default")});
}

namespace {

Bytes map_head(std::string_view type, unsigned dimension, std::string_view name)
{
    return Bytes().raw(type).u2(dimension).text(name);
}

Bytes parameters_chunk() { return chunk("VMPA", Bytes().u4(0).u4(6)); }

Bytes odd_chunk(std::string_view id) { return chunk(id, Bytes().raw("odd")); }

/// Points with values that conversions like to lose.
Bytes strange_points()
{
    const float inf = std::numeric_limits<float>::infinity();
    Bytes body;
    body.vec(0, 0, 0).vec(-0.0f, -0.0f, 1).vec(inf, -inf, 2).vec(1, 1, 3);
    body.u4(0x7FC12345).u4(0xFFC00001).u4(0x7F800001); // quiet, quiet, and signalling
    body.u4(0xFFBFFFFF).u4(0x00000001).f4(std::numeric_limits<float>::max());
    return chunk("PNTS", body);
}

} // namespace

File rich()
{
    Bytes flagged; // polygons whose high bits are in use
    flagged.raw("CURV").u2(2u | 1u << 10u).index(0).index(1).u2(3u | 2u << 10u);
    flagged.index(1).index(2).index(3);
    return form({
        chunk("AUTH", Bytes().text("someone")),
        odd_chunk("UNK0"),
        chunk("TAGS", Bytes().text("Bark").text("").text("Leaf").text("Trunk").text("DkBlu")),
        odd_chunk("UNK1"),
        chunk("LAYR", Bytes().u2(3).u2(0x8001).vec(1, 2, 3).text("Tree").u2(7)),
        chunk("DESC", Bytes().text("a tree")),
        points_chunk(6),
        odd_chunk("UNK2"),
        box_chunk(6),
        parameters_chunk(),
        chunk("VMAP", map_head("TXUV", 2, "uv").index(0).f4(0).f4(1).index(5).f4(1).f4(0)),
        parameters_chunk(),
        chunk("VMAP", map_head("WGHT", 1, "Density").index(2).f4(0.25f)),
        chunk("VMAP", map_head("MNVW", 1, "Subpatch Weight").index(1).f4(2)),
        chunk("VMAP", map_head("MORF", 3, "wind").index(3).vec(0, 1, 0)),
        chunk("VMAP", map_head("SPOT", 3, "bent").index(3).vec(0, 1, 0).index(4).vec(1, 0, 0)),
        chunk("VMAP", map_head("RGB ", 3, "c").index(0).vec(1, 0, 0)),
        chunk("VMAP", map_head("RGBA", 4, "c").index(0).vec(1, 0, 0).f4(0.5f)),
        chunk("VMAP", map_head("NORM", 3, "vert_normals").index(0).vec(0, 1, 0)),
        chunk("VMAP", map_head("PICK", 0, "chosen").index(1).index(4)),
        chunk("VMAP", map_head("????", 5, "").index(0).vec(1, 2, 3).f4(4).f4(5)),
        polygons_chunk("FACE", {{0, 1, 2}, {0, 2, 3, 4}, {5}, {4, 5}, {0, 1, 2, 0, 3, 4}}),
        tags_chunk("COLR", {{0, 4}}),
        tags_chunk("SURF", {{0, 0}, {1, 2}, {3, 0}, {4, 2}}),
        tags_chunk("PART", {{1, 3}, {2, 1}}),
        tags_chunk("SMGP", {{4, 3}}),
        parameters_chunk(),
        chunk("VMAD", map_head("TXUV", 2, "uv").index(0).index(1).f4(0.5f).f4(0.5f)),
        odd_chunk("UNK3"),
        chunk("POLS", flagged),
        tags_chunk("SURF", {{0, 0}, {1, 0}}),
        chunk("VMAD", map_head("WGHT", 1, "Edge Weight").index(1).index(0).f4(1)),
        polygons_chunk("PTCH", {{0, 1, 2, 3}}),
        polygons_chunk("SUBD", {{3, 2, 1, 0}}),
        polygons_chunk("MBAL", {{2}}),
        polygons_chunk("BONE", {{2, 3}}),
        tags_chunk("BONE", {{0, 3}}),
        tags_chunk("BNUP", {{0, 4}}),
        chunk("LAYR", Bytes().u2(7).u2(0).vec(0, 0, 0).text("Odd points").u2(0xFFFF).raw("more")),
        strange_points(),
        chunk("ICON", Bytes().u2(0).u2(1).raw("rgb")),
        polygons_chunk("FACE", {{0, 1, 3}}),
        tags_chunk("SURF", {{0, 2}}),
        layer_chunk(0, "empty"),
        odd_chunk("UNK4"),
        envelope_chunk(2, 0.5f),
        image_chunk(1, "images/bark.png"),
        odd_chunk("UNK5"),
        surface_chunk("Bark", 0.25f, 2, 1),
        surface_chunk("Leaf"),
        chunk("TEXT", Bytes().text("the end")),
    });
}

File default_layer()
{
    return form({surface_chunk("a"), points_chunk(3),
                 chunk("VMAP", map_head("WGHT", 1, "w").index(1).f4(1)),
                 polygons_chunk("FACE", {{0, 1, 2}}), tags_chunk("SURF", {{0, 0}}),
                 layer_chunk(0, "second"), points_chunk(4), polygons_chunk("FACE", {{1, 2, 3}}),
                 tags_chunk("SURF", {{0, 0}}), chunk("TAGS", Bytes().text("a"))});
}

File two_blocks()
{
    return form({
        chunk("TAGS", Bytes().text("one").text("two")),
        layer_chunk(0),
        points_chunk(3),
        chunk("VMAP", map_head("WGHT", 1, "w").index(1).f4(1)),
        polygons_chunk("FACE", {{0, 1, 2}}),
        tags_chunk("SURF", {{0, 0}}),
        chunk("VMAD", map_head("WGHT", 1, "w").index(2).index(0).f4(9)),
        points_chunk(4),
        chunk("VMAP", map_head("WGHT", 1, "w").index(0).f4(2).index(3).f4(3)),
        polygons_chunk("FACE", {{1, 2, 3}, {0, 1, 2}}),
        tags_chunk("SURF", {{0, 1}}),
        polygons_chunk("PTCH", {{0, 1, 2, 3}}),
        tags_chunk("SURF", {{0, 0}}),
        chunk("VMAD", map_head("WGHT", 1, "w").index(3).index(0).f4(8)),
    });
}

std::vector<std::pair<std::string, File>> good_samples()
{
    return {{"triangle", triangle()},
            {"rich", rich()},
            {"default_layer", default_layer()},
            {"two_blocks", two_blocks()},
            {"nothing", form({})},
            {"layer_only", form({layer_chunk(5, "alone")})},
            {"surfaces_only", form({surface_chunk("a"), surface_chunk("b", 1, 3, 4)})}};
}

std::vector<File> split_chunks(const File& file)
{
    std::vector<File> chunks;
    for (std::size_t at = 12; at + 8 <= file.size();) {
        std::size_t size = 0;
        for (std::size_t i = 4; i < 8; ++i)
            size = size << 8u | std::to_integer<std::size_t>(file[at + i]);
        const std::size_t end = std::min(file.size(), at + 8 + size + size % 2);
        chunks.emplace_back(file.begin() + static_cast<std::ptrdiff_t>(at),
                            file.begin() + static_cast<std::ptrdiff_t>(end));
        at = end;
    }
    return chunks;
}

std::string chunk_name(const File& chunk)
{
    std::string name;
    for (std::size_t i = 0; i < 4 && i < chunk.size(); ++i)
        name += static_cast<char>(chunk[i]);
    return name;
}

} // namespace test
