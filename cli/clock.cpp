// SPDX-License-Identifier: MIT
#include "cli/clock.h"

#include <cstdlib>
#include <ctime>
#include <limits>
#include <string_view>

#include <fmt/format.h>

#include "cli/errors.h"
#include "settings/values.h"

namespace cli {

namespace {

constexpr const char* variable = "DASTREL_CLOCK";

std::int64_t seconds_from(const char* source, std::string_view text)
{
    try {
        return settings::parse_whole_number(text, 0, std::numeric_limits<std::uint32_t>::max());
    } catch (const settings::ValueError& error) {
        throw UsageError(fmt::format("{}: {}; it counts seconds", source, error.what()));
    }
}

std::int64_t chosen_seconds(const std::string& option)
{
    if (!option.empty())
        return seconds_from("--clock", option);
    const char* const set = std::getenv(variable);
    if (set != nullptr && *set != '\0')
        return seconds_from(variable, set);
    return static_cast<std::uint32_t>(std::time(nullptr));
}

} // namespace

std::int64_t fix_clock(const std::string& option)
{
    const std::int64_t seconds = chosen_seconds(option);
    ::setenv(variable, fmt::format("{}", seconds).c_str(), 1);
    return seconds;
}

} // namespace cli
