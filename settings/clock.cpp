// SPDX-License-Identifier: MIT
#include "settings/clock.h"

#include <cstdlib>
#include <ctime>
#include <limits>
#include <new>
#include <string>

#include <fmt/format.h>

#include "settings/errors.h"
#include "settings/values.h"

namespace settings {

namespace {

constexpr const char* variable = "DASTREL_CLOCK";

std::int64_t seconds_from(const char* source, std::string_view text)
{
    try {
        return parse_whole_number(text, 0, std::numeric_limits<std::uint32_t>::max());
    } catch (const ValueError& error) {
        throw WrongSettings(
            fmt::format("{}: {}; it counts seconds, such as 1790000000", source, error.what()));
    }
}

std::int64_t chosen_seconds(std::string_view option)
{
    if (!option.empty())
        return seconds_from("--clock", option);
    const char* const set = std::getenv(variable);
    if (set != nullptr && *set != '\0')
        return seconds_from(variable, set);
    return static_cast<std::uint32_t>(std::time(nullptr));
}

} // namespace

std::int64_t fix_clock(std::string_view option)
{
    const std::int64_t seconds = chosen_seconds(option);
    if (::setenv(variable, std::to_string(seconds).c_str(), 1) != 0)
        throw std::bad_alloc(); // the module would take another clock than the one that is told
    return seconds;
}

} // namespace settings
