// SPDX-License-Identifier: MIT
#include "cli/console/output.h"

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <system_error>

#include <fmt/format.h>
#include <unistd.h>

#include "cli/console/progress_line.h"
#include "cli/errors.h"
#include "mesh/plural.h"
#include "mesh/printable.h"

namespace cli {

namespace {

constexpr std::chrono::milliseconds between_updates{100};
constexpr const char* erase_line = "\r\x1b[K";

volatile std::sig_atomic_t progress_shown = 0;
volatile std::sig_atomic_t result_begun = 0;

/// Writes all bytes to a descriptor; stops on failure. Async-signal-safe.
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
    result_begun = 1;
    if (write_all(STDOUT_FILENO, text))
        return;
    if (errno == EPIPE)
        throw ClosedPipe();
    throw Failure(ExitStatus::output,
                  fmt::format("standard output cannot be written: {}",
                              std::error_code(errno, std::generic_category()).message()));
}

bool has_begun_result() noexcept { return result_begun != 0; }

void write_stdout_best_effort(std::string_view text) noexcept
{
    (void)write_all(STDOUT_FILENO, text);
}

void write_stderr(std::string_view text) noexcept { (void)write_all(STDERR_FILENO, text); }

std::string grouped(std::uint64_t number)
{
    std::string digits = fmt::format("{}", number);
    for (std::size_t i = digits.size(); i > 3; i -= 3)
        digits.insert(i - 3, ",");
    return digits;
}

std::string grouped(std::uint64_t number, std::string_view noun)
{
    return grouped(number) + " " + mesh::plural(number, noun);
}

void Console::say(std::string_view text)
{
    clear_progress();
    write_stderr(mesh::printable(text) + "\n");
}

void Console::error(std::string_view text)
{
    errors_ += errors_.empty() ? "" : "\n";
    errors_ += text;
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

bool Console::begins_update()
{
    const auto now = std::chrono::steady_clock::now();
    if (!shows_progress() || now - last_progress_ < between_updates)
        return false;
    last_progress_ = now;
    progress_shown = 1;
    return true;
}

void Console::show_progress(std::string_view caption, double share)
{
    if (begins_update())
        write_stderr(erase_line + progress_line(caption, share, terminal_columns()));
}

void Console::show_progress(std::string_view caption)
{
    if (begins_update())
        write_stderr(erase_line + progress_line(caption, terminal_columns()));
}

void Console::clear_progress() noexcept { clear_progress_line(); }

void clear_progress_line() noexcept
{
    if (progress_shown == 0)
        return;
    progress_shown = 0;
    write_stderr(erase_line);
}

} // namespace cli
