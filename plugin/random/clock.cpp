// SPDX-License-Identifier: MIT
#include "plugin/random/clock.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>

namespace dastrel {

namespace {

bool parse_whole_number(const char* text, long long& number)
{
    if (text == nullptr || *text == '\0')
        return false;
    char* end = nullptr;
    errno = 0;
    number = std::strtoll(text, &end, 10);
    return errno == 0 && *end == '\0';
}

} // namespace

std::uint32_t clock_seconds()
{
    long long seconds = 0;
    if (!parse_whole_number(std::getenv("DASTREL_CLOCK"), seconds))
        seconds = static_cast<long long>(std::time(nullptr));
    return static_cast<std::uint32_t>(seconds);
}

} // namespace dastrel
