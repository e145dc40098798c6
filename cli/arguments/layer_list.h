// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace cli {

/// Reads a list of layers such as `1,3` or `2-4`, numbered from 1 by their place in the file.
/// @return the places, from 1, ascending, each once. @throws UsageError that begins with `option`.
[[nodiscard]] std::vector<std::size_t> parse_layer_list(std::string_view option,
                                                        std::string_view text);

} // namespace cli
