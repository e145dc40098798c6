// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace dastrel {

/// Seconds for the default seed: the environment variable DASTREL_CLOCK where it holds a whole
/// number, so that a run can be repeated exactly, else the calendar clock. Cut to the low 32 bits.
std::uint32_t clock_seconds();

} // namespace dastrel
