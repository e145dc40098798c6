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

/// A setting's value: a whole number or switch, a number in the panel's own unit (fraction,
/// radians), or the name of a map.
using Value = std::variant<std::int32_t, double, std::string>;

/// A text or JSON value that is no value of the setting. Says what is wrong and what to write.
class ValueError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Reads a whole number in the C locale. @throws ValueError
[[nodiscard]] std::int64_t parse_whole_number(std::string_view text, std::int64_t lowest,
                                              std::int64_t highest);

/// Reads a value as it is typed. @throws ValueError
[[nodiscard]] Value parse_value(const Setting& setting, std::string_view text);

/// Reads a value of a settings file: a number, a text with a unit, or true and false for a switch.
/// @throws ValueError
[[nodiscard]] Value parse_value(const Setting& setting, const nlohmann::json& value);

/// The value in the form that `parse_value` reads back to the same bits.
[[nodiscard]] nlohmann::json to_json(const Setting& setting, const Value& value);

/// The words that stand for on and off.
[[nodiscard]] bool is_switch_word(std::string_view text) noexcept;

} // namespace settings
