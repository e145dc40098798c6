// SPDX-License-Identifier: MIT
#include "cli/json_text.h"

#include <cstdint>
#include <iterator>
#include <string_view>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <utf8.h>

#include "mesh/printable.h"

namespace cli {

std::string json_text(const nlohmann::ordered_json& json)
{
    using Json = nlohmann::ordered_json;
    const std::string text = json.dump(2, ' ', false, Json::error_handler_t::replace);
    std::string shown;
    shown.reserve(text.size() + 1);
    for (auto at = text.begin(); at != text.end();) {
        const auto start = at;
        const char32_t character = utf8::unchecked::next(at);
        // ASCII control characters are already escaped in JSON strings.
        if (character > 0x7E && mesh::is_control(character))
            fmt::format_to(std::back_inserter(shown), "\\u{:04x}",
                           static_cast<std::uint32_t>(character));
        else
            shown.append(start, at);
    }
    return shown + "\n";
}

} // namespace cli
