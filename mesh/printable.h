// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace mesh {

/// Whether a character controls a terminal or text layout: control characters (below U+0020, U+007F
/// to U+009F), line and paragraph separators, and bidirectional marks, embeddings, overrides and
/// isolates.
[[nodiscard]] bool is_control(char32_t character) noexcept;

/// Untrusted text (from a file, a module or a file name) escaped for a terminal or window. Valid
/// UTF-8 stays; each byte of a control character (`is_control`) and each byte of invalid UTF-8
/// (surrogates, overlong and out-of-range sequences included) becomes `\xNN`. The result is one
/// line. The function is idempotent.
[[nodiscard]] std::string printable(std::string_view text);

/// Passes the escaped text (see `printable`) to `write` in pieces. Allocates no memory, so it can
/// be used after running out of memory and in signal handlers.
void write_printable(std::string_view text, void (*write)(std::string_view piece));

} // namespace mesh
