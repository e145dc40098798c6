// SPDX-License-Identifier: MIT
// Reading and writing of a scattered scene, to and from the page cache.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

#include <unistd.h>

#include <benchmark/benchmark.h>

#include "bench/command.h"
#include "bench/scenes.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"

namespace {

/// A folder whose files stay in memory, so that no disk is measured: a written file is flushed, and
/// that waits for the disk. The folder for temporary files where the system has none.
std::filesystem::path folder_in_memory()
{
    std::filesystem::path folder = "/dev/shm";
    return ::access(folder.c_str(), W_OK) == 0 ? folder : std::filesystem::temp_directory_path();
}

/// A file that is gone at the end.
class TemporaryFile {
public:
    TemporaryFile()
        : path_(folder_in_memory() / ("dastrel_bench_" + std::to_string(::getpid()) + ".lwo"))
    {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

mesh::Document forest(std::int64_t clones)
{
    bench::Command command(DASTREL_MODULE, bench::ground("hills"), bench::model("tree"));
    command.run("{\"clone_num\": " + std::to_string(clones) + "}");
    return command.release();
}

void write_lwo2(benchmark::State& state)
{
    const mesh::Document document = forest(state.range(0));
    const TemporaryFile file;
    for (auto _ : state)
        formats::write_lwo2_file(document, file.path());
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file.path())));
}

void read_lwo2(benchmark::State& state)
{
    const TemporaryFile file;
    formats::write_lwo2_file(forest(state.range(0)), file.path());
    for (auto _ : state)
        benchmark::DoNotOptimize(formats::read_lwo2_file(file.path(), {}));
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file.path())));
}

BENCHMARK(write_lwo2)->Arg(5000)->Arg(50000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(read_lwo2)->Arg(5000)->Arg(50000)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
