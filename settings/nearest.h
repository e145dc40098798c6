// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace settings {

/// The candidate with the smallest edit distance to `word`; `-` and `_` count as equal, and the
/// first one wins a tie. Empty if the distance exceeds a third of the word's length (but at least
/// 1).
[[nodiscard]] std::string nearest(std::string_view word, std::span<const std::string> candidates);

/// `; did you mean 'X'?` for the nearest candidate, or an empty string.
[[nodiscard]] std::string did_you_mean(std::string_view word,
                                       std::span<const std::string> candidates);

} // namespace settings
