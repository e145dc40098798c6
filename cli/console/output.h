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

/// Whether a result, or a part of one, went to standard output.
[[nodiscard]] bool has_begun_result() noexcept;

/// Writes to standard output where nothing can be done when it fails. May be called from a signal
/// handler.
void write_stdout_best_effort(std::string_view text) noexcept;

/// Writes to standard error, at once; nothing can be done where it takes nothing. May be called
/// from a signal handler.
void write_stderr(std::string_view text) noexcept;

/// 1234567 as 1,234,567.
[[nodiscard]] std::string grouped(std::uint64_t number);
/// The same with what it counts: `1 point`, `1,234 points`.
[[nodiscard]] std::string grouped(std::uint64_t number, std::string_view noun);

/// Standard error: everything that is said beside the results. Keeps one line of progress at the
/// bottom when standard error is a terminal, and takes it away before anything else is said. Texts
/// may hold names from files and words of modules: each is shown as one line, its control
/// characters made visible.
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

    /// All errors so far, one in each line, as they were given.
    [[nodiscard]] const std::string& errors() const noexcept { return errors_; }

    /// All warnings so far, said or not, as they were given.
    [[nodiscard]] const std::vector<std::string>& warnings() const noexcept { return warnings_; }

    /// True when progress is shown at all.
    [[nodiscard]] bool shows_progress() const noexcept;
    /// Shows how far the work is, from 0 to 1, in place of what was shown last, unless that is less
    /// than a tenth of a second old.
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

/// Takes the line of progress away. May be called from a signal handler.
void clear_progress_line() noexcept;

} // namespace cli
