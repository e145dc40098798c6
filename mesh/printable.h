// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace mesh {

/// Whether a character acts on what shows it instead of being shown: the control characters (below
/// U+0020, U+007F to U+009F), the line and paragraph separators, and the marks, embeddings,
/// overrides and isolates that change the direction of text.
[[nodiscard]] bool is_control(char32_t character) noexcept;

/// Text from a file, a module or a file's name in a form that can be shown on a terminal or in a
/// window: valid UTF-8 stays as it is; every byte of a control character, and every byte that is
/// not valid UTF-8 (surrogates, overlong and too large sequences included), becomes `\xNN`. The
/// result is one line. Showing a result again changes nothing.
[[nodiscard]] std::string printable(std::string_view text);

/// The same, handed to `write` piece by piece. Takes no memory: for what ends a program.
void write_printable(std::string_view text, void (*write)(std::string_view piece));

} // namespace mesh
