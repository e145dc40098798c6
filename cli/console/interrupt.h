// SPDX-License-Identifier: MIT
#pragma once

namespace cli {

/// Makes an interrupt from the keyboard (and a request to end) stop the program at once, with
/// unfinished files and the line of progress removed, and an error object written where errors are
/// told as JSON; makes a closed pipe an error of the write
/// instead of a death, and so a file that grows past its limit.
void handle_signals() noexcept;

} // namespace cli
