// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace settings {

/// Fixes the clock that a module starts its sampler from, for the modules that are loaded from now
/// on: to `option` where that is not empty, else to the environment's DASTREL_CLOCK, else to the
/// calendar clock. Afterwards DASTREL_CLOCK holds plain digits, which modules read alike.
/// @param option  what `--clock` was given
/// @return the seconds, which repeat the run
/// @throws WrongSettings where one is given that is no clock; nothing is fixed then
std::int64_t fix_clock(std::string_view option = {});

} // namespace settings
