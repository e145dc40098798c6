// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace bench {

/// Seconds of a clock that only goes forward, and processor seconds of this process.
[[nodiscard]] double wall_seconds();
[[nodiscard]] double cpu_seconds();

/// Forgets the peak of this process's memory: from now on it is counted anew.
void reset_peak_memory();

/// The most memory in bytes that this process has held.
[[nodiscard]] std::size_t peak_memory();

} // namespace bench
