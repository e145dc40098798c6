// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace desktop {

/// Whether a text is a calculation and not a single number: it has an operator or a parenthesis.
[[nodiscard]] bool is_calculation(std::string_view text) noexcept;

/// The result of a calculation with `+ - * /` and parentheses over decimal numbers. The decimal
/// point is a point in every country.
/// @throws settings::ValueError with a sentence for the person who wrote it
[[nodiscard]] double calculate(std::string_view text);

} // namespace desktop
