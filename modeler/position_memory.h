// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace modeler {

/// Checks before a run whether the positions of this many clones fit into memory (physical memory
/// and the limits of the process). Returns a message for the user, or an empty string if they fit.
[[nodiscard]] std::string position_memory_problem(std::int64_t clones);

/// The check with a given number of available bytes. For tests.
[[nodiscard]] std::string position_memory_problem(std::int64_t clones, std::uint64_t available);

} // namespace modeler
