// SPDX-License-Identifier: MIT
#pragma once

namespace cli {

/// Installs the signal handlers. SIGINT and SIGTERM end the program at once, after removing
/// temporary files and the progress line and writing the JSON error object if enabled. SIGPIPE and
/// SIGXFSZ are ignored, so that writing to a closed pipe or past the file size limit fails with an
/// error.
void handle_signals() noexcept;

} // namespace cli
