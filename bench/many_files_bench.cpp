// SPDX-License-Identifier: MIT
// Files of many small parts, each row at doubled sizes: the time must not grow faster than they.
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"
#include "formats/surface_looks.h"
#include "picture/scene/polygon_splitter.h"
#include "picture/scene/scene.h"

namespace {

void add_triangle(mesh::Layer& layer)
{
    const auto first = static_cast<std::uint32_t>(layer.points.size());
    layer.points.push_back({0, 0, 0});
    layer.points.push_back({0, 1, 0});
    layer.points.push_back({1, 0, 0});
    layer.polygons.add(mesh::polygon_face, std::array{first, first + 1, first + 2});
}

/// So many maps, each with one value, at points all over the layer.
mesh::Document document_of_maps(std::int64_t count)
{
    mesh::Document document;
    mesh::Layer& layer = document.layers.emplace_back();
    for (std::int64_t i = 0; i < count; ++i)
        add_triangle(layer);
    for (std::int64_t i = 0; i < count; ++i)
        layer.maps.emplace_back(mesh::map_wght, "w" + std::to_string(i), std::size_t{1})
            .set(static_cast<std::uint32_t>(3 * i), std::array{1.0F});
    return document;
}

/// So many layers, each of a triangle with a surface of its own.
mesh::Document document_of_layers(std::int64_t count)
{
    mesh::Document document;
    for (std::int64_t i = 0; i < count; ++i) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.number = static_cast<std::uint16_t>(i);
        add_triangle(layer);
        layer.polygons.set_surface(0, document.tags.append("surface " + std::to_string(i)));
    }
    return document;
}

void write(benchmark::State& state, const mesh::Document& document)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(formats::write_lwo2(document));
}

void read(benchmark::State& state, const mesh::Document& document)
{
    const std::vector<std::byte> file = formats::write_lwo2(document);
    for (auto _ : state)
        benchmark::DoNotOptimize(formats::read_lwo2(file, {}));
}

void write_maps(benchmark::State& state) { write(state, document_of_maps(state.range(0))); }
void read_maps(benchmark::State& state) { read(state, document_of_maps(state.range(0))); }
void write_layers(benchmark::State& state) { write(state, document_of_layers(state.range(0))); }
void read_layers(benchmark::State& state) { read(state, document_of_layers(state.range(0))); }

/// Maps that are new to a file whose other maps have parameters.
void write_maps_added_to_a_file(benchmark::State& state)
{
    mesh::Document document =
        formats::read_lwo2(formats::write_lwo2(document_of_maps(state.range(0))), {});
    mesh::Layer& layer = document.layers.front();
    layer.chunks.push_back({.id = mesh::fourcc("VMPA")});
    for (std::int64_t i = 0; i < state.range(0); ++i)
        layer.maps.emplace_back(mesh::map_wght, "new " + std::to_string(i), std::size_t{1})
            .set(0, std::array{1.0F});
    write(state, document);
}

void join_layers(benchmark::State& state)
{
    const std::vector<std::byte> file = formats::write_lwo2(document_of_layers(state.range(0)));
    for (auto _ : state) {
        mesh::Document into = formats::read_lwo2(file, {});
        formats::append_document(into, formats::read_lwo2(file, {}), "other", {});
        benchmark::DoNotOptimize(into);
    }
}

/// Rows of tags of one kind, from the last polygon to the first.
void tags_in_reverse(benchmark::State& state)
{
    const auto count = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        mesh::Polygons polygons;
        for (std::size_t i = 0; i < count; ++i)
            polygons.add(mesh::polygon_face, std::array<std::uint32_t, 1>{0});
        for (std::size_t i = count; i-- > 0;)
            polygons.set_tag(mesh::fourcc("PART"), i, 0);
        benchmark::DoNotOptimize(polygons);
    }
}

void scene_of_layers_and_surfaces(benchmark::State& state)
{
    const mesh::Document document =
        formats::read_lwo2(formats::write_lwo2(document_of_layers(state.range(0))), {});
    const auto looks = formats::surface_looks(document);
    for (auto _ : state) {
        const picture::Scene scene(picture::all_layers(document, looks));
        benchmark::DoNotOptimize(scene.triangle_count());
    }
}

/// A polygon whose corners lie anywhere: nearly a third of all pairs of its edges cross.
void split_scribble(benchmark::State& state)
{
    std::mt19937 random(1);
    const auto coordinate = [&] { return static_cast<double>(random() % 1000000U); };
    std::vector<mesh::Vec3> corners(static_cast<std::size_t>(state.range(0)));
    for (mesh::Vec3& corner : corners)
        corner = {coordinate(), coordinate(), 0.0};
    picture::PolygonSplitter splitter;
    for (auto _ : state) {
        splitter.split(corners);
        benchmark::DoNotOptimize(splitter.pieces().data());
    }
}

/// Four sizes, each twice as large as the one before.
void doubled(benchmark::internal::Benchmark* row, std::int64_t first)
{
    for (int times = 0; times < 4; ++times)
        row->Arg(first << times);
    row->Unit(benchmark::kMillisecond);
}

BENCHMARK(write_maps)->Apply([](auto* row) { doubled(row, 12500); });
BENCHMARK(read_maps)->Apply([](auto* row) { doubled(row, 12500); });
BENCHMARK(write_layers)->Apply([](auto* row) { doubled(row, 4000); });
BENCHMARK(read_layers)->Apply([](auto* row) { doubled(row, 4000); });
BENCHMARK(write_maps_added_to_a_file)->Apply([](auto* row) { doubled(row, 6250); });
BENCHMARK(join_layers)->Apply([](auto* row) { doubled(row, 4000); });
BENCHMARK(tags_in_reverse)->Apply([](auto* row) { doubled(row, 50000); });
BENCHMARK(scene_of_layers_and_surfaces)->Apply([](auto* row) { doubled(row, 2500); });
BENCHMARK(split_scribble)->Apply([](auto* row) { doubled(row, 127); });

} // namespace
