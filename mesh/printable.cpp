// SPDX-License-Identifier: MIT
#include "mesh/printable.h"

#include <algorithm>
#include <cstddef>

#include <utf8.h>

namespace mesh {

namespace {

template <typename Take> void take_escaped(std::string_view bytes, Take take)
{
    constexpr char digits[] = "0123456789ABCDEF";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        const char escaped[] = {'\\', 'x', digits[value >> 4u], digits[value & 0xFu]};
        take(std::string_view(escaped, sizeof escaped));
    }
}

/// Of valid text.
template <typename Take> void take_valid(std::string_view text, Take take)
{
    for (auto at = text.begin(); at != text.end();) {
        const auto start = at;
        const char32_t character = utf8::unchecked::next(at);
        const std::string_view bytes(start, at);
        if (is_control(character))
            take_escaped(bytes, take);
        else
            take(bytes);
    }
}

template <typename Take> void take_printable(std::string_view text, Take take)
{
    while (!text.empty()) {
        const std::size_t valid = std::min(utf8::find_invalid(text), text.size());
        take_valid(text.substr(0, valid), take);
        text.remove_prefix(valid);
        take_escaped(text.substr(0, 1), take); // nothing is left, or the byte is invalid
        text.remove_prefix(text.empty() ? 0 : 1);
    }
}

} // namespace

bool is_control(char32_t character) noexcept
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0) ||       // C0, DEL, C1
           character == 0x061C || character == 0x200E || character == 0x200F || // direction marks
           (character >= 0x2028 && character <= 0x202E) || // separators, embeddings, overrides
           (character >= 0x2066 && character <= 0x2069);   // isolates
}

std::string printable(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    take_printable(text, [&](std::string_view piece) { result += piece; });
    return result;
}

void write_printable(std::string_view text, void (*write)(std::string_view piece))
{
    take_printable(text, write);
}

} // namespace mesh
