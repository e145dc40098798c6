// SPDX-License-Identifier: MIT
#include "bench/usage.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <string>
#include <string_view>

namespace bench {

namespace {

/// A figure of the process's status file, given there in KiB.
std::size_t status(std::string_view key)
{
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        std::size_t value = 0;
        if (word == key && file >> value)
            return value * 1024;
    }
    return 0;
}

} // namespace

double wall_seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double cpu_seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void reset_peak_memory() { std::ofstream("/proc/self/clear_refs") << "5"; }

std::size_t peak_memory() { return status("VmHWM:"); }

std::size_t current_memory() { return status("VmRSS:"); }

} // namespace bench
