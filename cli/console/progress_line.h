// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// Columns of the terminal at standard error; of the variable COLUMNS where it does not tell, and
/// 80 where neither does.
[[nodiscard]] std::size_t terminal_columns();

/// A line that shows how far some work is, in less than `columns` columns, so that it never goes on
/// in a second line, which could not be taken away again. What has no room is left out: first of
/// the bar, then of the caption.
/// @param share  from 0 to 1
[[nodiscard]] std::string progress_line(std::string_view caption, double share,
                                        std::size_t columns);

/// The same where it is not known how far the work is.
[[nodiscard]] std::string progress_line(std::string_view caption, std::size_t columns);

} // namespace cli
