// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace desktop {

/// Whether a text is an expression, not a single number: it has an operator or a parenthesis.
[[nodiscard]] bool is_calculation(std::string_view text) noexcept;

/// Evaluates an expression with `+ - * /` and parentheses. Numbers always use a decimal point,
/// independent of the locale.
/// @throws settings::ValueError with a message for the user
[[nodiscard]] double calculate(std::string_view text);

} // namespace desktop
