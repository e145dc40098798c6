// SPDX-License-Identifier: MIT
#include "desktop/panel/arithmetic.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

#include <fmt/format.h>

#include "settings/values.h"

namespace desktop {

namespace {

using settings::ValueError;

constexpr std::string_view blanks = " \t";

bool is_digit(char c) noexcept { return c >= '0' && c <= '9'; }

/// A recursive-descent parser; each function consumes its non-terminal from `left_`. Empty: syntax
/// error.
class Calculation {
public:
    explicit Calculation(std::string_view text) : text_(text), left_(text) {}

    [[nodiscard]] std::optional<double> result()
    {
        const std::optional<double> value = sum();
        return next() == '\0' && left_.empty() ? value : std::nullopt;
    }

private:
    /// The next non-blank character, or 0 at the end.
    [[nodiscard]] char next() noexcept
    {
        left_.remove_prefix(std::min(left_.find_first_not_of(blanks), left_.size()));
        return left_.empty() ? '\0' : left_.front();
    }

    [[nodiscard]] bool take(char wanted) noexcept
    {
        if (next() != wanted)
            return false;
        left_.remove_prefix(1);
        return true;
    }

    [[nodiscard]] std::optional<double> sum()
    {
        std::optional<double> value = product();
        while (value && (next() == '+' || next() == '-')) {
            const bool plus = take('+');
            if (!plus)
                left_.remove_prefix(1);
            const std::optional<double> other = product();
            value = other ? std::optional(plus ? *value + *other : *value - *other) : std::nullopt;
        }
        return value;
    }

    [[nodiscard]] std::optional<double> product()
    {
        std::optional<double> value = factor();
        while (value && (next() == '*' || next() == '/')) {
            const bool times = take('*');
            if (!times)
                left_.remove_prefix(1);
            const std::optional<double> other = factor();
            if (!times && other == 0.0)
                throw ValueError(fmt::format("'{}' divides by zero", text_));
            value = other ? std::optional(times ? *value * *other : *value / *other) : std::nullopt;
        }
        return value;
    }

    [[nodiscard]] std::optional<double> factor()
    {
        bool negative = false;
        while (next() == '-' || next() == '+') {
            negative ^= left_.front() == '-';
            left_.remove_prefix(1);
        }
        const std::optional<double> value = take('(') ? parenthesis() : number();
        return value && negative ? std::optional(-*value) : value;
    }

    [[nodiscard]] std::optional<double> parenthesis()
    {
        constexpr int deepest = 100; // of the stack
        if (++depth_ > deepest)
            throw ValueError("there are too many parentheses within each other");
        const std::optional<double> value = sum();
        --depth_;
        return take(')') ? value : std::nullopt;
    }

    [[nodiscard]] std::optional<double> number()
    {
        if (!is_digit(next()) && next() != '.') // also keeps out "inf" and "nan"
            return std::nullopt;
        double value = 0.0;
        const char* const end = left_.data() + left_.size();
        const auto [stop, error] = std::from_chars(left_.data(), end, value);
        if (error == std::errc::result_out_of_range)
            throw ValueError(
                fmt::format("'{}' has a number that is too large or too small", text_));
        if (error != std::errc())
            return std::nullopt;
        left_.remove_prefix(static_cast<std::size_t>(stop - left_.data()));
        return value;
    }

    std::string_view text_;
    std::string_view left_;
    int depth_ = 0;
};

} // namespace

bool is_calculation(std::string_view text) noexcept
{
    if (text.find_first_of("*/()") != std::string_view::npos)
        return true;
    // A leading sign, or one in an exponent, is part of a number.
    const std::size_t first = text.find_first_not_of(blanks);
    for (std::size_t i = first; i < text.size(); ++i) {
        const bool exponent = i > first + 1 && (text[i - 1] == 'e' || text[i - 1] == 'E') &&
                              (is_digit(text[i - 2]) || text[i - 2] == '.');
        if (i > first && (text[i] == '+' || text[i] == '-') && !exponent)
            return true;
    }
    return false;
}

double calculate(std::string_view text)
{
    const std::optional<double> result = Calculation(text).result();
    if (result && std::isfinite(*result))
        return *result;
    if (result)
        throw ValueError(fmt::format("'{}' is too large for a number", text));
    std::string pointed(text);
    std::replace(pointed.begin(), pointed.end(), ',', '.');
    if (pointed != text && Calculation(pointed).result())
        throw ValueError(fmt::format("'{}' cannot be calculated; write {}", text, pointed));
    throw ValueError(
        fmt::format("'{}' cannot be calculated; write one such as 2*75 or (1+2)/3", text));
}

} // namespace desktop
