// SPDX-License-Identifier: MIT
// What comes in large numbers, each row at doubled sizes: the time must not grow faster than they.
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/command.h"
#include "bench/ground_records.h"
#include "bench/scenes.h"
#include "bench/silent_front_end.h"
#include "modeler/modeler.h"
#include "modeler/module.h"
#include "plugin/engine/clone.h"
#include "plugin/settings/params.h"

namespace {

constexpr int clones = 10;

/// A cube with so many weight maps of one value each.
mesh::Layer cube_with_maps(std::int64_t count)
{
    mesh::Layer layer = bench::model("cube");
    for (std::int64_t i = 0; i < count; ++i) {
        mesh::VertexMap map(mesh::map_wght, "w" + std::to_string(i), 1);
        map.set(0, std::array{1.0F});
        layer.maps.push_back(std::move(map));
    }
    return layer;
}

/// Layers of one triangle, each with the same weight map.
std::vector<mesh::Layer> triangles(std::int64_t count)
{
    std::vector<mesh::Layer> layers(static_cast<std::size_t>(count));
    for (mesh::Layer& layer : layers) {
        layer.points.push_back({0, 0, 0});
        layer.points.push_back({0, 1, 0});
        layer.points.push_back({1, 0, 0});
        layer.polygons.add(mesh::polygon_face, std::array<std::uint32_t, 3>{0, 1, 2});
        layer.maps.emplace_back(mesh::map_wght, "w", std::size_t{1});
        layer.maps.back().set(0, std::array{1.0F});
    }
    return layers;
}

void scatter(benchmark::State& state, std::vector<mesh::Layer> model)
{
    bench::Command command(DASTREL_MODULE, bench::ground("grid"), std::move(model));
    const std::string settings = "{\"clone_num\": " + std::to_string(clones) + "}";
    for (auto _ : state) {
        command.run(settings);
        command.undo();
    }
}

void model_of_many_maps(benchmark::State& state)
{
    std::vector<mesh::Layer> model;
    model.push_back(cube_with_maps(state.range(0)));
    scatter(state, std::move(model));
}

void model_of_many_layers(benchmark::State& state) { scatter(state, triangles(state.range(0))); }

void set_count(benchmark::State& state)
{
    ::setenv("DASTREL_BENCH_COUNT", std::to_string(state.range(0)).c_str(), 1);
}

void load_many_servers(benchmark::State& state)
{
    set_count(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(modeler::Module::load(DASTREL_MANY_MODULE));
}

void make_many_maps(benchmark::State& state)
{
    set_count(state);
    modeler::Module module = modeler::Module::load(DASTREL_MANY_MODULE);
    mesh::Document document;
    document.layers.push_back(bench::ground("grid"));
    modeler::Modeler session(std::move(document), {modeler::LayerRole::foreground});
    bench::SilentFrontEnd front_end;
    for (auto _ : state) {
        session.run(module, "Maps0", front_end);
        session.undo();
        session.redo();
        session.undo();
    }
}

/// Positions on a ground with one vertex that is not a number, or infinite.
void positions_with_odd_vertex(benchmark::State& state, double coordinate)
{
    mesh::Layer ground = bench::ground("hills");
    ground.points[5000].y = coordinate;
    const bench::GroundRecords records(ground);
    dastrel::params_typ settings;
    settings.clone_num = static_cast<int>(state.range(0));
    for (auto _ : state)
        dastrel::set_positions(nullptr, &settings);
}

/// Four sizes, each twice as large as the one before.
void doubled(benchmark::internal::Benchmark* row, std::int64_t first)
{
    for (int times = 0; times < 4; ++times)
        row->Arg(first << times);
    row->Unit(benchmark::kMillisecond);
}

BENCHMARK(model_of_many_maps)->Apply([](auto* row) { doubled(row, 6250); });
BENCHMARK(model_of_many_layers)->Apply([](auto* row) { doubled(row, 7500); });
BENCHMARK(load_many_servers)->Apply([](auto* row) { doubled(row, 50000); });
BENCHMARK(make_many_maps)->Apply([](auto* row) { doubled(row, 12500); });
BENCHMARK_CAPTURE(positions_with_odd_vertex, finite, 0.0)->Apply([](auto* row) {
    doubled(row, 12500);
});
BENCHMARK_CAPTURE(positions_with_odd_vertex, not_a_number, std::numeric_limits<double>::quiet_NaN())
    ->Apply([](auto* row) { doubled(row, 12500); });
BENCHMARK_CAPTURE(positions_with_odd_vertex, infinite, std::numeric_limits<double>::infinity())
    ->Apply([](auto* row) { doubled(row, 12500); });
BENCHMARK_CAPTURE(positions_with_odd_vertex, huge, 1e200)->Apply([](auto* row) {
    doubled(row, 12500);
});

} // namespace
