// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace cli {

/// Writes a result to standard output, at once. @throws ClosedPipe when nobody reads it any more,
/// Failure (output) when it cannot be written.
void write_stdout(std::string_view text);

/// 1234567 as 1,234,567.
[[nodiscard]] std::string grouped(std::uint64_t number);

/// A line that shows how far some work is: `share` runs from 0 to 1.
[[nodiscard]] std::string progress_bar(std::string_view caption, double share);

/// Standard error: everything that is said beside the results. Keeps one line of progress at the
/// bottom when standard error is a terminal, and takes it away before anything else is said.
class Console {
public:
    explicit Console(std::string verb) : verb_(std::move(verb)) {}
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() { clear_progress(); }

    /// From now on only errors are said.
    void set_quiet() noexcept { quiet_ = true; }

    /// `dastrel: VERB: ` and the text. Always said.
    void error(std::string_view text);
    /// Said once for each different text.
    void warning(const std::string& text);
    void note(std::string_view text);

    /// All warnings so far, said or not.
    [[nodiscard]] const std::vector<std::string>& warnings() const noexcept { return warnings_; }

    /// True when progress is shown at all.
    [[nodiscard]] bool shows_progress() const noexcept;
    /// Shows the text in place of the last one, unless that is less than a tenth of a second old.
    void show_progress(std::string_view text);
    void clear_progress() noexcept;

private:
    void say(std::string_view text);

    std::string verb_;
    bool quiet_ = false;
    std::vector<std::string> warnings_;
    std::set<std::string> said_;
    std::chrono::steady_clock::time_point last_progress_{};
};

/// Takes the line of progress away. May be called from a signal handler.
void clear_progress_line() noexcept;

} // namespace cli
