// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace settings {

/// How a setting's value is written.
enum class Unit {
    count,    ///< whole number of 32 bits
    percent,  ///< 80 or 80%; the panel holds 0.8
    fraction, ///< 0.1 or 10%; the panel holds 0.1
    angle,    ///< 10, 10deg or 0.5rad; the panel holds radians
    on_off,   ///< on or off; the panel holds 1 or 0
    map,      ///< name of a weight map, or none; the panel holds its place in the popup
};

/// One setting of the command: all that options, settings files, help and documents say about it.
struct Setting {
    std::string_view field;        ///< name in settings files; the option has `-` for `_`
    std::string_view label;        ///< what the panel's control is called
    Unit unit;                     ///< how values are written
    std::string_view default_text; ///< a text that reads as the default, to the last bit
    std::string_view group;        ///< heading in the help
    std::string_view meaning;      ///< one line
};

/// All settings, in the order in which the help shows them.
[[nodiscard]] std::span<const Setting> all_settings() noexcept;

/// The setting of this field name, or null.
[[nodiscard]] const Setting* find_setting(std::string_view field) noexcept;

/// The setting's option, such as `--clone-num`.
[[nodiscard]] std::string option_name(const Setting& setting);

/// The unit in one word, such as `percent`.
[[nodiscard]] std::string_view unit_name(Unit unit) noexcept;

/// What stands for the value in help, such as `PERCENT`.
[[nodiscard]] std::string_view placeholder(Unit unit) noexcept;

/// The default as a person would write it; `about` before an angle that does not come out even.
[[nodiscard]] std::string default_for_display(const Setting& setting);

} // namespace settings
