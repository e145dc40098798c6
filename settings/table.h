// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace settings {

/// The unit of a setting: how users write its value, and what the panel's control holds.
enum class Unit {
    count,    ///< 32-bit integer
    percent,  ///< 80 or 80%; the control holds 0.8
    fraction, ///< 0.1 or 10%; the control holds 0.1
    angle,    ///< 10, 10deg or 0.5rad; the control holds radians
    on_off,   ///< on or off; the control holds 1 or 0
    map,      ///< name of a weight map, or none; the control holds its index in the popup
};

/// One setting of the command. Options, settings files, help and documentation are derived from it.
struct Setting {
    std::string_view field;        ///< name in settings files; the option has `-` for `_`
    std::string_view label;        ///< label of the panel's control
    Unit unit;                     ///< unit of the value
    std::string_view default_text; ///< text that parses to exactly the default
    std::string_view group;        ///< heading in the help
    std::string_view meaning;      ///< description, one line
};

/// All settings, in the order in which the help shows them.
[[nodiscard]] std::span<const Setting> all_settings() noexcept;

/// The setting of this field name, or null.
[[nodiscard]] const Setting* find_setting(std::string_view field) noexcept;

/// The setting's option, such as `--clone-num`.
[[nodiscard]] std::string option_name(const Setting& setting);

/// The unit in one word, such as `percent`.
[[nodiscard]] std::string_view unit_name(Unit unit) noexcept;

/// The placeholder for the value in the help, such as `PERCENT`.
[[nodiscard]] std::string_view placeholder(Unit unit) noexcept;

/// The default for display, rounded; with `about` before a rounded angle.
[[nodiscard]] std::string default_for_display(const Setting& setting);

} // namespace settings
