// SPDX-License-Identifier: MIT
#include "cli/console/error_object.h"

#include <array>
#include <atomic>
#include <charconv>

#include <utf8.h>

#include "cli/console/output.h"
#include "cli/version.h"

namespace cli {

namespace {

constexpr std::string_view schema = "1";

std::atomic<bool> wanted = false;
std::atomic<bool> written = false; ///< by a signal that comes while an error is told, too

void write_character(char character) noexcept
{
    constexpr std::string_view digits = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    if (character == '"' || character == '\\') {
        const std::array<char, 2> escaped{'\\', character};
        write_stdout_best_effort({escaped.data(), escaped.size()});
    } else if (character == '\n') {
        write_stdout_best_effort("\\n");
    } else {
        const std::array<char, 6> escaped{
            '\\', 'u', '0', '0', digits[code >> 4u], digits[code & 15u]};
        write_stdout_best_effort({escaped.data(), escaped.size()});
    }
}

/// Whether the byte of a valid UTF-8 text needs no escape in JSON.
bool is_plain(char character) noexcept
{
    const auto code = static_cast<unsigned char>(character);
    return code >= 0x20 && code != 0x7F && character != '"' && character != '\\';
}

void write_sound_text(std::string_view text) noexcept
{
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size() && is_plain(text[plain]))
            ++plain;
        write_stdout_best_effort(text.substr(0, plain));
        if (plain == text.size())
            return;
        write_character(text[plain]);
        text.remove_prefix(plain + 1);
    }
}

/// Writes text as UTF-8; invalid bytes, as in file names or module texts, become U+FFFD.
void write_text(std::string_view text) noexcept
{
    while (!text.empty()) {
        const auto fault = utf8::find_invalid(text.begin(), text.end());
        const auto sound = static_cast<std::size_t>(fault - text.begin());
        write_sound_text(text.substr(0, sound));
        if (sound == text.size())
            return;
        write_stdout_best_effort("\\ufffd");
        text.remove_prefix(sound + 1);
    }
}

void write_text_or_null(std::string_view key, std::string_view text) noexcept
{
    write_stdout_best_effort(",\n    \"");
    write_stdout_best_effort(key);
    write_stdout_best_effort(text.empty() ? "\": " : "\": \"");
    write_text(text.empty() ? "null" : text);
    write_stdout_best_effort(text.empty() ? "" : "\"");
}

} // namespace

void enable_json_errors() noexcept { wanted = true; }

void write_error_object(ExitStatus status, std::initializer_list<std::string_view> message,
                        std::string_view file, std::string_view place) noexcept
{
    // Two consecutive objects are not valid JSON.
    if (!wanted || has_begun_result() || written.exchange(true))
        return;
    std::array<char, 16> number{};
    const char* const end =
        std::to_chars(number.data(), number.data() + number.size(), static_cast<int>(status)).ptr;
    for (const std::string_view piece :
         {std::string_view("{\n  \"schema\": "), schema,
          std::string_view(",\n  \"program\": \"dastrel "), std::string_view(version),
          std::string_view("\",\n  \"error\": {\n    \"status\": "),
          std::string_view(number.data(), static_cast<std::size_t>(end - number.data())),
          std::string_view(",\n    \"message\": \"")})
        write_stdout_best_effort(piece);
    for (const std::string_view piece : message)
        write_text(piece);
    write_stdout_best_effort("\"");
    write_text_or_null("file", file);
    write_text_or_null("place", place);
    write_stdout_best_effort("\n  }\n}\n");
}

} // namespace cli
