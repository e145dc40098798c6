// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace formats {

/// Takes one warning: a sentence without line end and without the name of the program or file. An
/// empty function drops them.
using WarningSink = std::function<void(const std::string&)>;

} // namespace formats
