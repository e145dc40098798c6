// SPDX-License-Identifier: MIT
// One task of the comparison with other programs, told as one line of their table:
//
//   dastrel_peer_task positions GROUND.obj N
//   dastrel_peer_task realise GROUND.obj MODEL.obj POINTS
//
// What a first run has to do besides the task is done before the time is taken, as it is with them.
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/command.h"
#include "bench/ground_records.h"
#include "bench/peers/obj_mesh.h"
#include "bench/usage.h"
#include "plugin/engine/clone.h"
#include "plugin/settings/params.h"

namespace {

/// Times `task`, which gives how many came out, and prints the line.
template <typename Task>
void tell(const char* name, const std::string& input, std::size_t asked, const char* note,
          Task task)
{
    bench::reset_peak_memory();
    const double wall = bench::wall_seconds();
    const double cpu = bench::cpu_seconds();
    const std::size_t got = task();
    std::printf("dastrel,%s,%s,%zu,%zu,%.6f,%.6f,%zu,%s\n", name, input.c_str(), asked, got,
                bench::wall_seconds() - wall, bench::cpu_seconds() - cpu,
                bench::peak_memory() / (1024 * 1024), note);
}

void positions(const std::filesystem::path& ground, std::size_t count)
{
    const bench::GroundRecords records(bench::read_peer_mesh(ground));
    dastrel::params_typ settings;
    settings.clone_num = static_cast<int>(count);
    tell("positions-poisson", ground.stem().string(), count, "default settings", [&] {
        dastrel::set_positions(nullptr, &settings);
        return count;
    });
}

void realise(const std::filesystem::path& ground, const std::filesystem::path& model,
             std::size_t points)
{
    mesh::Layer cloned = bench::read_peer_mesh(model);
    const std::size_t clones = (points + cloned.points.size() - 1) / cloned.points.size();
    bench::Command command(DASTREL_MODULE, bench::read_peer_mesh(ground), std::move(cloned));
    const std::string count = "{\"h_min\": -180, \"h_max\": 180, \"clone_num\": ";
    command.run(count + "30}");
    command.undo();
    tell("realise", model.stem().string(), points, "whole command, with DT_index",
         [&] { return command.run(count + std::to_string(clones) + "}").points_added; });
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    try {
        if (words.size() == 3 && words[0] == "positions") {
            positions(words[1], std::stoul(words[2]));
        } else if (words.size() == 4 && words[0] == "realise") {
            realise(words[1], words[2], std::stoul(words[3]));
        } else {
            std::fputs("usage: dastrel_peer_task positions GROUND.obj N\n"
                       "       dastrel_peer_task realise GROUND.obj MODEL.obj POINTS\n",
                       stderr);
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "dastrel_peer_task: %s\n", error.what());
        return 1;
    }
    return EXIT_SUCCESS;
}
