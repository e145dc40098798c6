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

/// Reads the big-endian values of one chunk's body sequentially. Throws FormatError with the chunk
/// and the byte offset if the body ends too early.
///
/// Buffers a piece of the body at a time, so memory does not depend on the size of the chunk. The
/// source must not be used otherwise while a cursor is in use.
class Cursor {
public:
    /// @param offset  offset of the body in the file
    /// @param size    size of the body, which must lie within the source
    Cursor(mesh::FourCC chunk, ChunkSource& source, std::uint64_t offset,
           std::uint64_t size) noexcept
        : chunk_(chunk), source_(source), start_(offset), end_offset_(offset + size)
    {}
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;
    ~Cursor() = default;

    [[nodiscard]] mesh::FourCC chunk() const noexcept { return chunk_; }
    [[nodiscard]] std::uint64_t remaining() const noexcept { return end_offset_ - offset(); }
    /// Offset of the next value in the file.
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

    /// An index of two bytes, or of four if the first byte is 0xFF.
    [[nodiscard]] std::uint32_t index()
    {
        need(2);
        if (std::to_integer<std::uint32_t>(*at_) != 0xFF)
            return u2();
        return u4() & 0x00FFFFFFu;
    }

    /// A zero-terminated string with padding to even length. The padding may be missing at the end
    /// of the body.
    [[nodiscard]] std::string text();

    /// All remaining bytes.
    [[nodiscard]] std::vector<std::byte> rest();

    /// The next bytes without consuming them: at least `least`, or all remaining if fewer, and more
    /// if they are buffered. Valid until the next read. Consume with `skip`.
    /// @param least  at most ChunkSource::longest_run
    [[nodiscard]] std::span<const std::byte> peek(std::size_t least)
    {
        const auto wanted = std::min<std::uint64_t>(least, remaining());
        if (static_cast<std::size_t>(end_ - at_) < wanted)
            fill(static_cast<std::size_t>(wanted));
        return {at_, end_};
    }

    /// Consumes bytes returned by `peek`.
    void skip(std::size_t count) noexcept { at_ += count; }

    /// Throws FormatError for the position of the next value.
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

    /// Buffers at least `least` bytes from the next value on.
    void fill(std::size_t least);

    mesh::FourCC chunk_;
    ChunkSource& source_;
    const std::byte* begin_ = nullptr; ///< the buffered piece
    const std::byte* at_ = nullptr;
    const std::byte* end_ = nullptr;
    std::uint64_t start_; ///< offset of the piece in the file
    std::uint64_t end_offset_;
};

} // namespace formats::lwo2
