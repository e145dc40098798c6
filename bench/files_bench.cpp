// SPDX-License-Identifier: MIT
// Reading and writing of a scattered scene, to and from the page cache, and the same value by value
// through a stream.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <unistd.h>

#include <benchmark/benchmark.h>

#include "bench/command.h"
#include "bench/plain_lwo2.h"
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

bool holds(const std::filesystem::path& path, const std::vector<std::byte>& bytes)
{
    std::ifstream file(path, std::ios::binary);
    const std::string there{std::istreambuf_iterator<char>(file), {}};
    return there.size() == bytes.size() &&
           std::memcmp(there.data(), bytes.data(), bytes.size()) == 0;
}

template <typename Write> void write_file(benchmark::State& state, Write write)
{
    const mesh::Document document = forest(state.range(0));
    const TemporaryFile file;
    write(document, file.path());
    if (!holds(file.path(), formats::write_lwo2(document)))
        state.SkipWithError("the file is another");
    for (auto _ : state)
        write(document, file.path());
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file.path())));
}

template <typename Read> void read_file(benchmark::State& state, Read read)
{
    const TemporaryFile file;
    formats::write_lwo2_file(forest(state.range(0)), file.path());
    if (!holds(file.path(), formats::write_lwo2(read(file.path()))))
        state.SkipWithError("what was read is another document");
    for (auto _ : state)
        benchmark::DoNotOptimize(read(file.path()));
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file.path())));
}

void write_lwo2(benchmark::State& state)
{
    write_file(state, [](const mesh::Document& document, const std::filesystem::path& path) {
        formats::write_lwo2_file(document, path);
    });
}

void write_lwo2_plain(benchmark::State& state) { write_file(state, bench::write_lwo2_plainly); }

void read_lwo2(benchmark::State& state)
{
    read_file(state,
              [](const std::filesystem::path& path) { return formats::read_lwo2_file(path, {}); });
}

void read_lwo2_plain(benchmark::State& state) { read_file(state, bench::read_lwo2_plainly); }

BENCHMARK(write_lwo2)->Arg(5000)->Arg(50000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(write_lwo2_plain)->Arg(5000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(read_lwo2)->Arg(5000)->Arg(50000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(read_lwo2_plain)->Arg(5000)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
