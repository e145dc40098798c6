// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace settings {

/// Sets the environment variable DASTREL_CLOCK, from which modules loaded afterwards seed their
/// random generator: to `option` if not empty, else to its current value, else to the current time.
/// Afterwards the variable holds plain digits. Not thread-safe.
/// @param option  value of `--clock`
/// @return the clock in seconds; the same value repeats the run
/// @throws WrongSettings if the value is not a whole number of seconds; nothing is set then
std::int64_t fix_clock(std::string_view option = {});

} // namespace settings
