// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "settings/table.h"
#include "settings/values.h"

namespace settings {

/// Warning for a valid but implausible value: how it was interpreted, the effect, and what may have
/// been intended. Begins with "was read as", to follow the name of the setting. Empty for all other
/// values, including defaults.
/// @param value  the value of the panel's control
[[nodiscard]] std::string implausible(const Setting& setting, const Value& value);

} // namespace settings
