// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace modeler {

/// Why this machine, or this process under its limits, cannot hold the places of so many clones,
/// whatever the model is: a sentence for the user, empty where it can. To be asked before a run,
/// which would otherwise find out after minutes.
[[nodiscard]] std::string position_memory_problem(std::int64_t clones);

/// The same for a given number of bytes. For tests.
[[nodiscard]] std::string position_memory_problem(std::int64_t clones, std::uint64_t available);

} // namespace modeler
