// SPDX-License-Identifier: MIT
#include "formats/lwo2/read/cursor.h"

#include <cstring>

namespace formats::lwo2 {

void Cursor::fill(std::size_t least)
{
    const std::uint64_t from = offset();
    const std::uint64_t wanted = end_offset_ - from;
    const auto piece = source_.read(from, least);
    start_ = from;
    begin_ = piece.data();
    at_ = begin_;
    end_ = begin_ + std::min<std::uint64_t>(piece.size(), wanted);
}

std::string Cursor::text()
{
    const std::uint64_t start = offset();
    std::string text;
    for (;;) {
        const auto piece = peek(1);
        if (piece.empty())
            fail_at(start, "a text has no end; the file is damaged or cut short");
        const auto* const zero =
            static_cast<const std::byte*>(std::memchr(piece.data(), 0, piece.size()));
        const std::byte* const end = zero != nullptr ? zero : piece.data() + piece.size();
        text.append(reinterpret_cast<const char*>(piece.data()),
                    static_cast<std::size_t>(end - piece.data()));
        at_ = end;
        if (zero != nullptr)
            break;
    }
    ++at_;
    if (text.size() % 2 == 0 && remaining() > 0) {
        need(1);
        ++at_;
    }
    return text;
}

std::vector<std::byte> Cursor::rest()
{
    std::vector<std::byte> bytes;
    bytes.reserve(static_cast<std::size_t>(remaining()));
    while (remaining() > 0) {
        const auto piece = peek(1);
        bytes.insert(bytes.end(), piece.begin(), piece.end());
        skip(piece.size());
    }
    return bytes;
}

} // namespace formats::lwo2
