// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace cli {

/// Fixes the clock as `settings::fix_clock` does. Called before any work by all that load a module
/// or print settings, so that a wrong DASTREL_CLOCK is refused everywhere.
/// @param option  what `--clock` was given; empty: nothing
/// @throws UsageError
std::int64_t fix_clock(std::string_view option = {});

} // namespace cli
