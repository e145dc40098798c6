// SPDX-License-Identifier: MIT
#include "cli/arguments/layer_list.h"

#include <cstdint>
#include <set>

#include <fmt/format.h>

#include "cli/errors.h"
#include "settings/values.h"

namespace cli {

namespace {

constexpr std::int64_t most_layers = 65535; // a layer's number has 16 bits

} // namespace

std::vector<std::size_t> parse_layer_list(std::string_view option, std::string_view text)
{
    std::set<std::size_t> layers;
    std::string_view rest = text;
    for (;;) {
        const std::size_t comma = rest.find(',');
        const std::string_view part = rest.substr(0, comma);
        const std::size_t dash = part.find('-', 1);
        try {
            const auto first = settings::parse_whole_number(part.substr(0, dash), 1, most_layers);
            const auto last =
                dash == std::string_view::npos
                    ? first
                    : settings::parse_whole_number(part.substr(dash + 1), first, most_layers);
            for (auto layer = first; layer <= last; ++layer)
                layers.insert(static_cast<std::size_t>(layer));
        } catch (const settings::ValueError& error) {
            throw UsageError(fmt::format("{}: {}; write layers from 1, such as 1,3 or 2-4", option,
                                         error.what()));
        }
        if (comma == std::string_view::npos)
            return {layers.begin(), layers.end()};
        rest.remove_prefix(comma + 1);
    }
}

} // namespace cli
