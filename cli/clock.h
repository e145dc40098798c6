// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace cli {

/// Fixes the clock that a module seeds its sampler from, for the modules that are loaded from now
/// on: to `option` where that is not empty, else to the environment's DASTREL_CLOCK, else to the
/// calendar clock. @return the seconds, which repeat the run. @throws UsageError
std::int64_t fix_clock(const std::string& option);

} // namespace cli
