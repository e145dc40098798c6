// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "formats/lwo2/big_endian.h"
#include "formats/lwo2/ids.h"
#include "formats/lwo2/single.h"

namespace formats::lwo2 {

/// Receives the output of an Encoder in large blocks.
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    virtual ~ByteSink() = default;
    virtual void write(std::span<const std::byte> bytes) = 0;
};

/// Encoded size of an index in bytes.
constexpr unsigned index_size(std::uint32_t index) noexcept
{
    return index < first_long_index ? 2 : 4;
}

/// Writes an index of two or four bytes and returns a pointer past it.
inline std::byte* put_index(std::byte* to, std::uint32_t value) noexcept
{
    return value < first_long_index ? put_u2(to, value) : put_u4(to, 0xFF000000u | value);
}

/// Writes big-endian values through a buffer to a ByteSink.
class Encoder {
public:
    explicit Encoder(ByteSink& sink)
        : sink_(sink), buffer_(std::make_unique_for_overwrite<std::byte[]>(capacity_))
    {}

    /// Returns a pointer to at least `count` writable bytes in the buffer. Write there and then
    /// call `advance`.
    [[nodiscard]] std::byte* reserve(std::size_t count)
    {
        if (capacity_ - size_ < count)
            grow(count);
        return buffer_.get() + size_;
    }

    /// Accepts the bytes from the pointer returned by `reserve` up to `end`.
    void advance(const std::byte* end) noexcept
    {
        size_ = static_cast<std::size_t>(end - buffer_.get());
    }

    void u1(std::uint32_t value)
    {
        std::byte* const to = reserve(1);
        *to = static_cast<std::byte>(value);
        advance(to + 1);
    }
    void u2(std::uint32_t value) { advance(put_u2(reserve(2), value)); }
    void u4(std::uint32_t value) { advance(put_u4(reserve(4), value)); }
    void single(double value) { u4(narrow(value)); }
    void index(std::uint32_t value) { advance(put_index(reserve(4), value)); }

    void bytes(std::span<const std::byte> run)
    {
        if (run.size() > capacity_ - size_)
            flush();
        if (run.size() > capacity_) {
            sink_.write(run);
        } else if (!run.empty()) {
            std::memcpy(buffer_.get() + size_, run.data(), run.size());
            size_ += run.size();
        }
    }

    /// A zero-terminated string, padded with another zero byte to even length.
    void text(std::string_view text)
    {
        bytes(std::as_bytes(std::span(text)));
        u1(0);
        if (text.size() % 2 == 0)
            u1(0);
    }

    void flush()
    {
        sink_.write({buffer_.get(), size_});
        size_ = 0;
    }

private:
    void grow(std::size_t count)
    {
        flush();
        if (count <= capacity_)
            return;
        buffer_ = std::make_unique_for_overwrite<std::byte[]>(count);
        capacity_ = count;
    }

    ByteSink& sink_;
    // large enough for few system calls, small enough for the processor's cache
    std::size_t capacity_ = std::size_t{256} * 1024;
    std::unique_ptr<std::byte[]> buffer_;
    std::size_t size_ = 0;
};

/// Has the interface of an Encoder and only counts the bytes.
class ByteCounter {
public:
    void u1(std::uint32_t) noexcept { size_ += 1; }
    void u2(std::uint32_t) noexcept { size_ += 2; }
    void u4(std::uint32_t) noexcept { size_ += 4; }
    void single(double) noexcept { size_ += 4; }
    void index(std::uint32_t value) noexcept { size_ += index_size(value); }
    void bytes(std::span<const std::byte> run) noexcept { size_ += run.size(); }
    void text(std::string_view text) noexcept { size_ += (text.size() / 2 + 1) * 2; }

    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

private:
    std::uint64_t size_ = 0;
};

} // namespace formats::lwo2
