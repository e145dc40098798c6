// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Writes a result to standard output, unbuffered. @throws ClosedPipe if the reader has closed the
/// pipe; Failure (output) if writing fails
void write_stdout(std::string_view text);

/// Whether any part of a result was written to standard output.
[[nodiscard]] bool has_begun_result() noexcept;

/// Writes to standard output and ignores errors. Async-signal-safe.
void write_stdout_best_effort(std::string_view text) noexcept;

/// Writes to standard error, unbuffered, and ignores errors. Async-signal-safe.
void write_stderr(std::string_view text) noexcept;

/// Formats a number with thousands separators: 1,234,567.
[[nodiscard]] std::string grouped(std::uint64_t number);
/// Formats a number with its noun: `1 point`, `1,234 points`.
[[nodiscard]] std::string grouped(std::uint64_t number, std::string_view noun);

/// Messages on standard error. If standard error is a terminal, shows a progress line at the
/// bottom, which is removed before other output. Each message is printed as one line, with control
/// characters escaped (see mesh::printable), since it may contain text from files and modules.
class Console {
public:
    explicit Console(std::string verb) : verb_(std::move(verb)) {}
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() { clear_progress(); }

    /// Suppresses all output except errors.
    void set_quiet() noexcept { quiet_ = true; }

    /// Prints `dastrel: VERB: ` and the text, even if quiet.
    void error(std::string_view text);
    /// Prints a warning; each distinct text only once.
    void warning(const std::string& text);
    void note(std::string_view text);

    /// All errors so far, unescaped, one per line.
    [[nodiscard]] const std::string& errors() const noexcept { return errors_; }

    /// All warnings so far, unescaped, printed or not.
    [[nodiscard]] const std::vector<std::string>& warnings() const noexcept { return warnings_; }

    /// Whether progress is shown: standard error is a terminal and output is not quiet.
    [[nodiscard]] bool shows_progress() const noexcept;
    /// Replaces the progress line; at most ten times per second. `share`: completed part, 0 to 1.
    void show_progress(std::string_view caption, double share);
    void show_progress(std::string_view caption);
    void clear_progress() noexcept;

private:
    void say(std::string_view text);
    bool begins_update();

    std::string verb_;
    bool quiet_ = false;
    std::string errors_;
    std::vector<std::string> warnings_;
    std::set<std::string> said_;
    std::chrono::steady_clock::time_point last_progress_{};
};

/// Removes the progress line. Async-signal-safe.
void clear_progress_line() noexcept;

} // namespace cli
