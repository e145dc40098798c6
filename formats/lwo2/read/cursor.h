// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

#include "formats/errors.h"
#include "mesh/fourcc.h"

namespace formats::lwo2 {

/// Reads the big-endian values of one chunk's body in order; throws FormatError, naming the chunk
/// and the byte of the file, where the body ends too early.
class Cursor {
public:
    /// @param offset  where the body's first byte stands in the file
    Cursor(mesh::FourCC chunk, std::span<const std::byte> body, std::uint64_t offset) noexcept
        : chunk_(chunk), begin_(body.data()), at_(body.data()), end_(body.data() + body.size()),
          offset_(offset)
    {}

    [[nodiscard]] mesh::FourCC chunk() const noexcept { return chunk_; }
    [[nodiscard]] std::size_t left() const noexcept { return static_cast<std::size_t>(end_ - at_); }
    /// Where the next value stands in the file.
    [[nodiscard]] std::uint64_t offset() const noexcept
    {
        return offset_ + static_cast<std::uint64_t>(at_ - begin_);
    }

    [[nodiscard]] std::uint16_t u2()
    {
        need(2);
        return static_cast<std::uint16_t>(next() << 8u | next());
    }

    [[nodiscard]] std::uint32_t u4()
    {
        need(4);
        std::uint32_t value = next() << 24u;
        value |= next() << 16u;
        value |= next() << 8u;
        return value | next();
    }

    /// An index of two or four bytes; the long form begins with 0xFF.
    [[nodiscard]] std::uint32_t index()
    {
        need(2);
        if (std::to_integer<std::uint32_t>(*at_) != 0xFF)
            return u2();
        return u4() & 0x00FFFFFFu;
    }

    /// A text up to its zero byte, and the filler that makes its length even. The last filler of a
    /// body may be missing.
    [[nodiscard]] std::string text()
    {
        const void* const zero = left() > 0 ? std::memchr(at_, 0, left()) : nullptr;
        if (zero == nullptr)
            fail("a text has no end; the file is damaged or cut short");
        const auto length = static_cast<std::size_t>(static_cast<const std::byte*>(zero) - at_);
        std::string text(reinterpret_cast<const char*>(at_), length);
        at_ += length + 1;
        if (length % 2 == 0 && at_ != end_)
            ++at_;
        return text;
    }

    /// The next `count` bytes.
    [[nodiscard]] std::span<const std::byte> bytes(std::size_t count)
    {
        need(count);
        const std::span<const std::byte> taken(at_, count);
        at_ += count;
        return taken;
    }

    [[nodiscard]] std::span<const std::byte> rest() { return bytes(left()); }

    /// Throws for a fault at the next value.
    [[noreturn]] void fail(const std::string& reason) const { fail_at(offset(), reason); }

    [[noreturn]] void fail_at(std::uint64_t offset, const std::string& reason) const
    {
        throw FormatError(mesh::to_text(chunk_), offset, reason);
    }

private:
    void need(std::size_t count) const
    {
        if (left() < count)
            fail("the chunk ends within a value; the file is damaged or cut short");
    }

    std::uint32_t next() noexcept { return std::to_integer<std::uint32_t>(*at_++); }

    mesh::FourCC chunk_;
    const std::byte* begin_;
    const std::byte* at_;
    const std::byte* end_;
    std::uint64_t offset_;
};

} // namespace formats::lwo2
