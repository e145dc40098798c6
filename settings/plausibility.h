// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "settings/table.h"
#include "settings/values.h"

namespace settings {

/// What to tell of a value that is hardly meant as it was read: how it was read, what comes of it,
/// and what may have been meant. Begins with "was read as", so that it goes on from the name of the
/// setting. Empty for all other values, defaults among them.
/// @param value  as the panel holds it
[[nodiscard]] std::string implausible(const Setting& setting, const Value& value);

} // namespace settings
