// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace cli {

/// Formats JSON, indented, with a line end. Bytes that are not valid UTF-8 (names in files) become
/// replacement characters. Terminal control characters are written as `\uNNNN`.
[[nodiscard]] std::string json_text(const nlohmann::ordered_json& json);

} // namespace cli
