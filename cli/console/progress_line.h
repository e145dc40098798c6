// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Width in columns of the terminal at standard error; if unknown, the value of the environment
/// variable COLUMNS, else 80.
[[nodiscard]] std::size_t terminal_columns();

/// Formats a progress line of fewer than `columns` columns, so that it never wraps (a wrapped line
/// could not be erased). Shortens first the bar, then the caption.
/// @param share  completed part, 0 to 1
[[nodiscard]] std::string progress_line(std::string_view caption, double share,
                                        std::size_t columns);

/// Formats a progress line without a percentage.
[[nodiscard]] std::string progress_line(std::string_view caption, std::size_t columns);

} // namespace cli
