// SPDX-License-Identifier: MIT
#include "bench/usage.h"

#include <chrono>
#include <ctime>
#include <fstream>
#include <string>

namespace bench {

double wall_seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

double cpu_seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void reset_peak_memory() { std::ofstream("/proc/self/clear_refs") << "5"; }

std::size_t peak_memory()
{
    std::ifstream file("/proc/self/status");
    for (std::string word; file >> word;) {
        std::size_t kibibytes = 0;
        if (word == "VmHWM:" && file >> kibibytes)
            return kibibytes * 1024;
    }
    return 0;
}

} // namespace bench
