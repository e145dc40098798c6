// SPDX-License-Identifier: MIT
/// Writes or reads one large file and tells how fast it went and how much memory it took beyond the
/// document.
///
///     lwo2_big_file write TREES FILE
///     lwo2_big_file read TREES FILE      compares all that is read with what was written

#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include <fmt/format.h>
#include <sys/resource.h>

#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "tests/formats/big_file/forest.h"

namespace {

/// A line of the process's status in bytes.
std::int64_t status_bytes(std::string_view key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(key))
            return std::strtoll(line.c_str() + key.size(), nullptr, 10) * 1024;
    throw std::runtime_error(fmt::format("no {} in /proc/self/status", key));
}

std::int64_t memory_now() { return status_bytes("VmRSS:"); }
std::int64_t memory_peak() { return status_bytes("VmHWM:"); }

void forget_peak()
{
    std::ofstream file("/proc/self/clear_refs");
    if (!(file << "5" << std::flush))
        throw std::runtime_error("cannot reset the peak of memory");
}

double processor_seconds()
{
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

/// What one piece of work took.
struct Cost {
    double wall_s = 0.0;
    double processor_s = 0.0;
};

template <typename Work> Cost measured(Work work)
{
    const double processor = processor_seconds();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
    return {wall.count(), processor_seconds() - processor};
}

void report(const char* what, const std::filesystem::path& path, const Cost& cost,
            std::int64_t beyond)
{
    constexpr double mega = 1e6;
    constexpr double most_beyond = 200 * mega;
    const auto size = static_cast<double>(std::filesystem::file_size(path));
    fmt::print("{} {:.0f} MB: {:.3f} s wall, {:.3f} s processor, {:.0f} MB/s ({:.0f} MB/s wall), "
               "{:.0f} MB of memory at the peak, {:.1f} MB beyond the document\n",
               what, size / mega, cost.wall_s, cost.processor_s, size / mega / cost.processor_s,
               size / mega / cost.wall_s, static_cast<double>(memory_peak()) / mega,
               static_cast<double>(beyond) / mega);
    if (static_cast<double>(beyond) >= most_beyond)
        throw std::runtime_error(fmt::format("{} takes too much memory", what));
}

void write(std::uint32_t trees, const std::filesystem::path& path)
{
    const mesh::Document document = big_file::make_forest(trees);
    forget_peak();
    const std::int64_t before = memory_now();
    const Cost cost = measured([&] { formats::write_lwo2_file(document, path); });
    report("write", path, cost, memory_peak() - before);
}

void read(std::uint32_t trees, const std::filesystem::path& path)
{
    mesh::Document document;
    forget_peak();
    const Cost cost = measured([&] { document = formats::read_lwo2_file(path, {}); });
    report("read", path, cost, memory_peak() - memory_now());
    const std::string found = big_file::difference_from_forest(document, trees);
    if (!found.empty())
        throw std::runtime_error(found);
    fmt::print("all of {} layers is as it was written\n", document.layers.size());
}

} // namespace

int main(int count, char** words)
try {
    const std::string_view verb = count == 4 ? words[1] : "";
    std::uint32_t trees = 0;
    if (count == 4) {
        const std::string_view number = words[2];
        std::from_chars(number.data(), number.data() + number.size(), trees);
    }
    if (trees == 0 || (verb != "write" && verb != "read")) {
        fmt::print(stderr, "usage: lwo2_big_file write|read TREES FILE\n");
        return 2;
    }
    if (verb == "write")
        write(trees, words[3]);
    else
        read(trees, words[3]);
    return 0;
} catch (const std::exception& error) {
    fmt::print(stderr, "lwo2_big_file: {}\n", error.what());
    return 1;
}
