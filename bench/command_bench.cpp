// SPDX-License-Identifier: MIT
// The whole command, from the call of the module to the finished edit.
#include <cstddef>
#include <cstdint>
#include <string>

#include <benchmark/benchmark.h>

#include "bench/command.h"
#include "bench/scenes.h"
#include "bench/usage.h"

namespace {

struct Task {
    const char* module;
    const char* ground;
    const char* model;
    const char* settings; ///< besides the number of clones
};

void command(benchmark::State& state, const Task& task)
{
    bench::Command command(task.module, bench::ground(task.ground), bench::model(task.model));
    const auto settings = [&task](std::int64_t clones) {
        return "{\"clone_num\": " + std::to_string(clones) + task.settings + "}";
    };
    // The first in a process to read a large ground asks the system for memory; the C library keeps
    // blocks of that size only after one was given back, so it takes two rounds until all do alike.
    for (int round = 0; round < 2; ++round) {
        command.run(settings(1));
        command.undo();
    }
    std::size_t points = 0;
    for (auto _ : state) {
        const double start = bench::wall_seconds();
        points = command.run(settings(state.range(0))).points_added;
        state.SetIterationTime(bench::wall_seconds() - start);
        command.undo();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points));
    state.counters["points"] = static_cast<double>(points);
}

constexpr Task on(const char* ground, const char* model, const char* settings = "")
{
    return {DASTREL_MODULE, ground, model, settings};
}

constexpr Task plain(const char* ground, const char* model, const char* settings = "")
{
    return {DASTREL_PLAIN_MODULE, ground, model, settings};
}

void sizes(benchmark::internal::Benchmark* row)
{
    row->RangeMultiplier(10)->Range(1000, 1000000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

void once(benchmark::internal::Benchmark* row)
{
    row->UseManualTime()->Unit(benchmark::kMillisecond);
}

constexpr const char* density = ", \"density_wg\": \"Density\"";
constexpr const char* area = ", \"size_poly_area\": true";
constexpr const char* jitter = ", \"jitter\": 0.1";

BENCHMARK_CAPTURE(command, grid_cube, on("grid", "cube"))->Apply(sizes);
BENCHMARK_CAPTURE(command, grid_cube_plain, plain("grid", "cube"))
    ->Arg(1000)
    ->Arg(10000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_cube, on("hills", "cube"))->Apply(sizes);
BENCHMARK_CAPTURE(command, hills_cube_plain, plain("hills", "cube"))
    ->Arg(1000)
    ->Arg(10000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_cube_density, on("hills", "cube", density))
    ->Arg(10000)
    ->Arg(100000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_cube_density_plain, plain("hills", "cube", density))
    ->Arg(10000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_cube_area, on("hills", "cube", area))
    ->Arg(10000)
    ->Arg(100000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_cube_area_plain, plain("hills", "cube", area))
    ->Arg(10000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_tree, on("hills", "tree"))
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(48781)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_tree_plain, plain("hills", "tree"))->Arg(1000)->Apply(once);
BENCHMARK_CAPTURE(command, hills_tree_jitter, on("hills", "tree", jitter))
    ->Arg(1000)
    ->Arg(10000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_tree_jitter_plain, plain("hills", "tree", jitter))
    ->Arg(1000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_large, on("hills", "large"))
    ->Arg(20)
    ->Arg(100)
    ->Arg(2000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, hills_large_plain, plain("hills", "large"))->Arg(20)->Apply(once);
BENCHMARK_CAPTURE(command, mountain_cube, on("mountain", "cube"))
    ->Arg(1000)
    ->Arg(1000000)
    ->Apply(once);
BENCHMARK_CAPTURE(command, mountain_cube_plain, plain("mountain", "cube"))->Arg(1000)->Apply(once);

} // namespace
