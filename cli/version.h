// SPDX-License-Identifier: MIT
#pragma once

namespace cli {

/// The version of the program.
inline constexpr const char* version = DASTREL_VERSION;

} // namespace cli
