// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace formats {

/// Receives one warning: a sentence without line end, program name or file name. May be empty;
/// warnings are then discarded.
using WarningSink = std::function<void(const std::string&)>;

} // namespace formats
