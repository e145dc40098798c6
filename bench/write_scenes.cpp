// SPDX-License-Identifier: MIT
// Writes the meshes of the benchmarks as files, for timing the whole program:
//
//   dastrel_bench_scenes FOLDER
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <utility>

#include "bench/scenes.h"
#include "formats/lwo2_writer.h"

namespace {

void write(mesh::Layer layer, const std::filesystem::path& file)
{
    mesh::Document document;
    document.layers.push_back(std::move(layer));
    formats::write_lwo2_file(document, file);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: dastrel_bench_scenes FOLDER\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        for (const char* name : {"grid", "hills", "mountain"})
            write(bench::ground(name), folder / (std::string(name) + ".lwo"));
        for (const char* name : {"cube", "tree", "large"})
            write(bench::model(name), folder / (std::string(name) + ".lwo"));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dastrel_bench_scenes: %s\n", error.what());
        return 1;
    }
    return 0;
}
