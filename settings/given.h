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

/// A setting that the user gave, and where.
struct GivenSetting {
    const Setting* setting = nullptr;
    Value value;
    std::string
        source; ///< begins messages about it, such as `--seed` or `meadow.json: line 3: seed`
};

/// A setting and what its control holds.
struct UsedSetting {
    const Setting* setting = nullptr;
    Value value; ///< of a map: the name of the chosen entry
};

/// Reads a settings file: one JSON object, its keys the field names; or the summary of a run, which
/// has such an object under "settings".
/// @throws UnreadableSettings when there is no reading it, WrongSettings when it is not such an
/// object or when a key or value is wrong; file, line and key are in the message.
[[nodiscard]] std::vector<GivenSetting> read_settings_file(const std::filesystem::path& file);

/// The same from a file's text; `name` stands for it in messages.
[[nodiscard]] std::vector<GivenSetting> read_settings_text(std::string_view text,
                                                           const std::string& name);

/// `over` in place of what `under` gives for the same settings.
[[nodiscard]] std::vector<GivenSetting> merge_settings(std::vector<GivenSetting> under,
                                                       std::vector<GivenSetting> over);

/// The text of a settings file that reads back to the same values.
[[nodiscard]] std::string settings_text(std::span<const UsedSetting> used);

/// All defaults, as the text of a settings file that reads back to the same values.
[[nodiscard]] std::string default_settings_text();

} // namespace settings
