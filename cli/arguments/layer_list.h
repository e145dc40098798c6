// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace cli {

/// Parses a list of layer positions, such as `1,3` or `2-4`; positions in the file count from 1.
/// @return the positions, ascending, without duplicates
/// @throws UsageError that begins with `option`
[[nodiscard]] std::vector<std::size_t> parse_layer_list(std::string_view option,
                                                        std::string_view text);

} // namespace cli
