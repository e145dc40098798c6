// SPDX-License-Identifier: MIT
#include "modeler/position_memory.h"

#include <algorithm>

#include <fmt/format.h>
#include <sys/resource.h>
#include <sys/sysinfo.h>

#include "mesh/plural.h"

namespace modeler {

namespace {

/// Minimum memory per clone before the first one is created: a list node of 64 bytes, a copy of it
/// in sorted order, and the index entries used while sorting.
constexpr std::uint64_t bytes_for_each = 160;

/// Memory and swap of the machine, limited by the resource limits of the process.
std::uint64_t available_memory() noexcept
{
    std::uint64_t most = UINT64_MAX;
    struct sysinfo machine = {};
    if (::sysinfo(&machine) == 0)
        most = (std::uint64_t{machine.totalram} + machine.totalswap) * machine.mem_unit;
    struct rlimit limit = {};
    if (::getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
        most = std::min<std::uint64_t>(most, limit.rlim_cur);
    return most;
}

} // namespace

std::string position_memory_problem(std::int64_t clones, std::uint64_t available)
{
    const std::uint64_t count = clones > 0 ? static_cast<std::uint64_t>(clones) : 0;
    if (count <= available / bytes_for_each)
        return {};
    return fmt::format("{} need at least {} bytes of memory for their places alone, more "
                       "than the {} that there are; make fewer clones",
                       mesh::counted(count, "clone"), count * bytes_for_each, available);
}

std::string position_memory_problem(std::int64_t clones)
{
    return position_memory_problem(clones, available_memory());
}

} // namespace modeler
