// SPDX-License-Identifier: MIT
#include "cli/console/output.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <system_error>

#include <fmt/format.h>
#include <unistd.h>

#include "cli/errors.h"

namespace cli {

namespace {

constexpr std::chrono::milliseconds between_updates{100};
constexpr std::string_view erase_line = "\r\x1b[K";

volatile std::sig_atomic_t progress_shown = 0;

/// Writes to a descriptor until all is written or it fails. Uses only what a signal handler may.
bool write_all(int descriptor, std::string_view text) noexcept
{
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

void write_stdout(std::string_view text)
{
    if (write_all(STDOUT_FILENO, text))
        return;
    if (errno == EPIPE)
        throw ClosedPipe();
    throw Failure(ExitStatus::output,
                  fmt::format("standard output cannot be written: {}",
                              std::error_code(errno, std::generic_category()).message()));
}

std::string grouped(std::uint64_t number)
{
    std::string digits = fmt::format("{}", number);
    for (std::size_t i = digits.size(); i > 3; i -= 3)
        digits.insert(i - 3, ",");
    return digits;
}

std::string progress_bar(std::string_view caption, double share)
{
    constexpr int width = 30;
    const double shown = std::clamp(share, 0.0, 1.0);
    const auto filled = static_cast<std::size_t>(shown * width);
    return fmt::format("{} [{:<{}}] {:3.0f} %", caption, std::string(filled, '#'), width,
                       shown * 100.0);
}

void Console::say(std::string_view text)
{
    clear_progress();
    // Nothing can be done about a standard error that does not take it.
    (void)write_all(STDERR_FILENO, fmt::format("{}\n", text));
}

void Console::error(std::string_view text)
{
    say(verb_.empty() ? fmt::format("dastrel: {}", text)
                      : fmt::format("dastrel: {}: {}", verb_, text));
}

void Console::warning(const std::string& text)
{
    if (!said_.insert(text).second)
        return;
    warnings_.push_back(text);
    if (!quiet_)
        say("warning: " + text);
}

void Console::note(std::string_view text)
{
    if (!quiet_)
        say(text);
}

bool Console::shows_progress() const noexcept { return !quiet_ && ::isatty(STDERR_FILENO) == 1; }

void Console::show_progress(std::string_view text)
{
    const auto now = std::chrono::steady_clock::now();
    if (!shows_progress() || now - last_progress_ < between_updates)
        return;
    last_progress_ = now;
    progress_shown = 1;
    (void)write_all(STDERR_FILENO, fmt::format("{}{}", erase_line, text));
}

void Console::clear_progress() noexcept { clear_progress_line(); }

void clear_progress_line() noexcept
{
    if (progress_shown == 0)
        return;
    progress_shown = 0;
    (void)write_all(STDERR_FILENO, erase_line);
}

} // namespace cli
