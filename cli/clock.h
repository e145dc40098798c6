// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace cli {

/// Calls `settings::fix_clock`. All commands that load a module or print settings call it before
/// any work, so that an invalid DASTREL_CLOCK is always rejected.
/// @param option  value of `--clock`; empty if not given
/// @return the clock in seconds
/// @throws UsageError
std::int64_t fix_clock(std::string_view option = {});

} // namespace cli
