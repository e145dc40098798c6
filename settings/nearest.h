// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace settings {

/// The candidate that takes the fewest single-character changes to become `word`; `-` and `_` count
/// as one character. The earlier one wins a tie. Empty when none is near enough to have been meant:
/// at most a third of the word's length may differ, and one character always may.
[[nodiscard]] std::string nearest(std::string_view word, std::span<const std::string> candidates);

/// `; did you mean 'X'?` for the nearest candidate, or an empty text.
[[nodiscard]] std::string did_you_mean(std::string_view word,
                                       std::span<const std::string> candidates);

} // namespace settings
