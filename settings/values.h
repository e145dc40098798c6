// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

#include <nlohmann/json_fwd.hpp>

#include "settings/table.h"

namespace settings {

/// A setting's value: an integer or switch, a number in the unit of the panel (fraction, radians),
/// or the name of a map.
using Value = std::variant<std::int32_t, double, std::string>;

/// A string or JSON value is not a valid value of the setting. The message says what is wrong and
/// what is allowed.
class ValueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Parses an integer in [lowest, highest], independent of the locale. @throws ValueError
[[nodiscard]] std::int64_t parse_whole_number(std::string_view text, std::int64_t lowest,
                                              std::int64_t highest);

/// Parses a value as users type it. @throws ValueError
[[nodiscard]] Value parse_value(const Setting& setting, std::string_view text);

/// Converts a value of a settings file: a number, a string with a unit, or true or false for a
/// switch. @throws ValueError
[[nodiscard]] Value parse_value(const Setting& setting, const nlohmann::json& value);

/// The value as JSON, which `parse_value` converts back without loss.
[[nodiscard]] nlohmann::json to_json(const Setting& setting, const Value& value);

/// Whether the string is a value of a switch, such as `on` or `off`.
[[nodiscard]] bool is_switch_word(std::string_view text) noexcept;

} // namespace settings
