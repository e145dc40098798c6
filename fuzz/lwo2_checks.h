// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace fuzz {

/// Reads any bytes as an LWO2 object and, if they are one, checks that writing and reading again
/// gives the same document and the same bytes, and that the object can be joined to itself.
/// @return what went wrong; empty when all is well, which a refusal of the bytes is too
[[nodiscard]] std::string check_lwo2(std::span<const std::byte> bytes);

} // namespace fuzz
