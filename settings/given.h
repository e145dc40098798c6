// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/table.h"
#include "settings/values.h"

namespace settings {

/// A setting given by the user, and its source.
struct GivenSetting {
    const Setting* setting = nullptr;
    Value value;
    std::string source; ///< prefix for messages, such as `--seed` or `meadow.json: line 3: seed`
};

/// A setting and the value of its control.
struct UsedSetting {
    const Setting* setting = nullptr;
    Value value; ///< for a map: the name of the selected entry
};

/// Reads a settings file: a JSON object with field names as keys, or the JSON summary of a run,
/// which has such an object under "settings".
/// @throws UnreadableSettings if it cannot be read; WrongSettings, with file, line and key, if it
/// is not such an object or a key or value is invalid
[[nodiscard]] std::vector<GivenSetting> read_settings_file(const std::filesystem::path& file);

/// Parses the text of a settings file; `name` is the file name for messages. @throws WrongSettings
[[nodiscard]] std::vector<GivenSetting> read_settings_text(std::string_view text,
                                                           const std::string& name);

/// Merges two lists; values in `over` override those in `under`.
[[nodiscard]] std::vector<GivenSetting> merge_settings(std::vector<GivenSetting> under,
                                                       std::vector<GivenSetting> over);

/// Formats values as the text of a settings file, which reads back to the same values.
[[nodiscard]] std::string settings_text(std::span<const UsedSetting> used);

/// Formats all defaults as the text of a settings file.
[[nodiscard]] std::string default_settings_text();

} // namespace settings
