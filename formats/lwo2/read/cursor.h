// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "formats/errors.h"
#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/read/chunk_source.h"
#include "mesh/fourcc.h"

namespace formats::lwo2 {

/// Reads the big-endian values of one chunk's body in order; throws FormatError, naming the chunk
/// and the byte of the file, where the body ends too early.
///
/// It holds a piece of the body at a time, so that a chunk's size costs no memory. The source must
/// not be asked for anything else while a cursor is in use.
class Cursor {
public:
    /// @param offset  where the body's first byte stands in the file
    /// @param size    of the body, all of which lies within the source
    Cursor(mesh::FourCC chunk, ChunkSource& source, std::uint64_t offset,
           std::uint64_t size) noexcept
        : chunk_(chunk), source_(source), start_(offset), end_offset_(offset + size)
    {}
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;
    ~Cursor() = default;

    [[nodiscard]] mesh::FourCC chunk() const noexcept { return chunk_; }
    [[nodiscard]] std::uint64_t remaining() const noexcept { return end_offset_ - offset(); }
    /// Where the next value stands in the file.
    [[nodiscard]] std::uint64_t offset() const noexcept
    {
        return start_ + static_cast<std::uint64_t>(at_ - begin_);
    }

    [[nodiscard]] std::uint16_t u2()
    {
        need(2);
        const std::uint16_t value = read_u2(at_);
        at_ += 2;
        return value;
    }

    [[nodiscard]] std::uint32_t u4()
    {
        need(4);
        const std::uint32_t value = read_u4(at_);
        at_ += 4;
        return value;
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
    [[nodiscard]] std::string text();

    /// All bytes that are left.
    [[nodiscard]] std::vector<std::byte> rest();

    /// The next bytes as far as they are at hand: at least `least` of them, or all that are left
    /// where these are fewer. They stay where they are until `skip`.
    /// @param least  at most ChunkSource::longest_run
    [[nodiscard]] std::span<const std::byte> peek(std::size_t least)
    {
        const auto wanted = std::min<std::uint64_t>(least, remaining());
        if (static_cast<std::size_t>(end_ - at_) < wanted)
            fill(static_cast<std::size_t>(wanted));
        return {at_, end_};
    }

    /// Passes over bytes that are at hand.
    void skip(std::size_t count) noexcept { at_ += count; }

    /// Throws for a fault at the next value.
    [[noreturn]] void fail(const std::string& reason) const { fail_at(offset(), reason); }

    [[noreturn]] void fail_at(std::uint64_t offset, const std::string& reason) const
    {
        throw FormatError(mesh::to_text(chunk_), offset, reason);
    }

private:
    void need(std::size_t count)
    {
        if (static_cast<std::size_t>(end_ - at_) >= count) [[likely]]
            return;
        if (remaining() < count)
            fail("the chunk ends within a value; the file is damaged or cut short");
        fill(count);
    }

    /// Gets the next piece of the body, from the next value on.
    void fill(std::size_t least);

    mesh::FourCC chunk_;
    ChunkSource& source_;
    const std::byte* begin_ = nullptr; ///< the piece at hand
    const std::byte* at_ = nullptr;
    const std::byte* end_ = nullptr;
    std::uint64_t start_; ///< where the piece stands in the file
    std::uint64_t end_offset_;
};

} // namespace formats::lwo2
