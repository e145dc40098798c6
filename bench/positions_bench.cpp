// SPDX-License-Identifier: MIT
// Where the clones stand: with the indexes, and with the plain lists at sizes they can finish.
#include <string>

#include <benchmark/benchmark.h>

#include "bench/ground_records.h"
#include "bench/scenes.h"
#include "plugin/engine/clone.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/host/run_state.h"
#include "plugin/random/LW6-random2.h"
#include "plugin/random/flat_face.h"
#include "plugin/settings/params.h"

namespace {

void positions(benchmark::State& state, const char* ground, bool plain, bool by_area)
{
    const bench::GroundRecords records(bench::ground(ground));
    dastrel::params_typ settings;
    settings.clone_num = static_cast<int>(state.range(0));
    settings.size_poly_area = by_area ? 1 : 0;
    dastrel::plain_lists = plain;
    for (auto _ : state)
        dastrel::set_positions(nullptr, &settings);
    dastrel::plain_lists = false;
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// One random point of a polygon, over and over.
void random_points(benchmark::State& state, bool plain)
{
    const bench::GroundRecords records(bench::ground("hills"));
    dastrel::random sampler;
    sampler.fixed(1);
    dastrel::face6_typ& polygon = dastrel::poly_data[0];
    std::pmr::monotonic_buffer_resource memory;
    const dastrel::flat_face laid(polygon, memory);
    for (auto _ : state)
        benchmark::DoNotOptimize(plain ? sampler.z_polygonu(&polygon) : laid.draw(sampler));
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK_CAPTURE(random_points, laid_once, false);
BENCHMARK_CAPTURE(random_points, plain, true);

BENCHMARK_CAPTURE(positions, grid, "grid", false, false)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, grid_plain, "grid", true, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, hills, "hills", false, false)
    ->RangeMultiplier(10)
    ->Range(1000, 1000000)
    ->Arg(50000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, hills_plain, "hills", true, false)
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, hills_plain, "hills", true, false)
    ->Arg(50000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, hills_by_area, "hills", false, true)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, hills_by_area_plain, "hills", true, true)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, mountain, "mountain", false, false)
    ->Arg(1000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(positions, mountain_plain, "mountain", true, false)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);

} // namespace
