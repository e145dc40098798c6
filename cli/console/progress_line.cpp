// SPDX-License-Identifier: MIT
#include "cli/console/progress_line.h"

#include <algorithm>
#include <cstdlib>

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utf8.h>

#include "mesh/printable.h"
#include "settings/values.h"

namespace cli {

namespace {

/// Upper bound of the width of a character in columns.
std::size_t width_of(char32_t character) noexcept { return character < 0x80 ? 1 : 2; }

/// The longest prefix of the text that fits. Sets `width` to its width.
std::string_view fitted(std::string_view text, std::size_t most, std::size_t& width)
{
    width = 0;
    for (auto at = text.begin(); at != text.end();) {
        const auto start = at;
        const std::size_t next = width_of(utf8::unchecked::next(at));
        if (width + next > most)
            return {text.begin(), start};
        width += next;
    }
    return text;
}

} // namespace

std::size_t terminal_columns()
{
    constexpr std::int64_t most = 10000;
    constexpr std::size_t usual = 80;
    struct winsize size = {};
    if (::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    const char* const set = std::getenv("COLUMNS");
    try {
        return set == nullptr
                   ? usual
                   : static_cast<std::size_t>(settings::parse_whole_number(set, 1, most));
    } catch (const settings::ValueError&) {
        return usual;
    }
}

std::string progress_line(std::string_view caption, double share, std::size_t columns)
{
    constexpr std::size_t longest_bar = 30;
    constexpr std::size_t shortest_bar = 4;
    constexpr std::size_t brackets = 3; // " [" and "]"
    const double shown = std::clamp(share, 0.0, 1.0);
    const std::string percent = fmt::format(" {:3.0f} %", shown * 100.0);
    const std::size_t room = std::max<std::size_t>(columns, 1) - 1;
    std::size_t width = 0;
    const std::string text = mesh::printable(caption);
    const std::string_view words = fitted(text, room - std::min(room, percent.size()), width);
    const std::size_t left = room - std::min(room, percent.size() + width);
    if (left < brackets + shortest_bar)
        return std::string(words) + percent.substr(0, room - width);
    const std::size_t bar = std::min(longest_bar, left - brackets);
    const auto filled = static_cast<std::size_t>(shown * static_cast<double>(bar));
    return fmt::format("{} [{:<{}}]{}", words, std::string(filled, '#'), bar, percent);
}

std::string progress_line(std::string_view caption, std::size_t columns)
{
    std::size_t width = 0;
    const std::string text = mesh::printable(caption);
    return std::string(fitted(text, std::max<std::size_t>(columns, 1) - 1, width));
}

} // namespace cli
