// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace cli {

/// JSON as text, indented, with a line end. Names in files need not be UTF-8, and JSON must be:
/// bytes that are not become replacement characters. Characters that would act on a terminal are
/// written as `\uNNNN`, which is the same text to a reader of JSON.
[[nodiscard]] std::string json_text(const nlohmann::ordered_json& json);

} // namespace cli
