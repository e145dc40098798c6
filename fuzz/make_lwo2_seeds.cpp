// SPDX-License-Identifier: MIT
// Writes the seeds of the LWO2 fuzz target into a folder: make_lwo2_seeds FOLDER

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "tests/formats/support/bytes.h"
#include "tests/formats/support/samples.h"

namespace {

using test::Bytes;
using test::chunk;
using test::File;
using test::form;

void save(const std::filesystem::path& folder, const std::string& name, const File& file)
{
    std::ofstream(folder / (name + ".lwo"), std::ios::binary)
        .write(reinterpret_cast<const char*>(file.data()),
               static_cast<std::streamsize>(file.size()));
}

/// An object around some chunks of a layer of four points and two polygons.
File around(const Bytes& chunks)
{
    return form({chunk("TAGS", Bytes().text("a").text("b")), test::layer_chunk(0),
                 test::points_chunk(4), test::polygons_chunk("FACE", {{0, 1, 2}, {3}}), chunks});
}

void save_maps(const std::filesystem::path& folder)
{
    for (const char* const type : {"TXUV", "WGHT", "MNVW", "MORF", "SPOT", "RGB ", "PICK"}) {
        const unsigned dimension = type[0] == 'T' ? 2 : type[0] == 'P' ? 0 : type[0] == 'W' ? 1 : 3;
        Bytes rows;
        for (const unsigned point : {3u, 0u, 2u}) {
            rows.index(point);
            for (unsigned i = 0; i < dimension; ++i)
                rows.f4(static_cast<float>(i) * 0.5f);
        }
        const Bytes head = Bytes().raw(type).u2(dimension).text("m");
        save(folder, std::string("map_") + std::string(type, 3),
             around(chunk("VMAP", Bytes(head).add(rows))));
    }
    save(folder, "corners",
         around(chunk("VMAD", Bytes().raw("TXUV").u2(2).text("m").index(1).index(0).f4(1).f4(0))));
    save(folder, "map_twice",
         around(Bytes()
                    .add(chunk("VMPA", Bytes().u4(0).u4(6)))
                    .add(chunk("VMAP", Bytes().raw("WGHT").u2(1).text("w").index(1).f4(1)))
                    .add(chunk("VMPA", Bytes().u4(1).u4(2)))
                    .add(chunk("VMAP", Bytes().raw("WGHT").u2(1).text("w").index(0).f4(2)))));
}

void save_surfaces(const std::filesystem::path& folder)
{
    save(folder, "surface",
         around(Bytes()
                    .add(test::tags_chunk("SURF", {{0, 0}, {1, 1}}))
                    .add(test::envelope_chunk(1, 0.5f))
                    .add(test::image_chunk(1, "a.png"))
                    .add(test::surface_chunk("a", 0.5f, 1, 1))
                    .add(test::surface_chunk("b"))));
    save(folder, "image_of_image",
         around(
             Bytes()
                 .add(test::tags_chunk("SURF", {{0, 0}}))
                 .add(chunk("CLIP", Bytes().u4(1).add(sub_chunk("XREF", Bytes().u4(2).text("x")))))
                 .add(chunk("CLIP", Bytes().u4(2).add(sub_chunk("XREF", Bytes().u4(1).text("x")))))
                 .add(test::surface_chunk("a", 0.5f, 0, 1))));
    save(folder, "nodes",
         around(Bytes()
                    .add(test::tags_chunk("SURF", {{0, 1}}))
                    .add(test::image_chunk(9, "n.png"))
                    .add(chunk("SURF", Bytes().text("b").text("a").add(
                                           sub_chunk("NODS", Bytes().raw("odd")))))
                    .add(test::surface_chunk("a"))));
}

void save_structures(const std::filesystem::path& folder)
{
    for (const char* const kind : {"SURF", "PART", "SMGP", "COLR"})
        save(folder, std::string("tags_") + kind, around(test::tags_chunk(kind, {{1, 1}, {0, 0}})));
    for (const char* const type : {"CURV", "PTCH", "SUBD", "MBAL", "BONE"})
        save(folder, std::string("polygons_") + type,
             around(test::polygons_chunk(type, {{0, 1}, {2}})));
    save(folder, "flags", around(chunk("POLS", Bytes().raw("CURV").u2(1u | 3u << 10u).index(0))));
    save(folder, "parent",
         form({chunk("LAYR", Bytes().u2(1).u2(1).vec(1, 2, 3).text("child").u2(0)),
               test::layer_chunk(0, "root")}));
    save(folder, "bytes_behind", [] {
        File file = test::triangle();
        file.push_back(std::byte{1});
        return file;
    }());
    save(folder, "odd_chunk", around(chunk("UNKN", Bytes().raw("odd"))));
    save(folder, "two_tag_lists", around(chunk("TAGS", Bytes().text("c"))));
    save(folder, "older_form", form({test::points_chunk(1)}, "LWOB"));
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: make_lwo2_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    for (const auto& [name, file] : test::good_samples())
        save(folder, name, file);
    save_maps(folder);
    save_surfaces(folder);
    save_structures(folder);
    return 0;
}
