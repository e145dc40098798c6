// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "formats/lwo2/ids.h"
#include "formats/lwo2/single.h"

namespace formats::lwo2 {

/// Where an Encoder's bytes go, in large runs.
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(const ByteSink&) = delete;
    ByteSink& operator=(const ByteSink&) = delete;
    virtual ~ByteSink() = default;
    virtual void write(std::span<const std::byte> bytes) = 0;
};

/// Bytes that an index takes.
constexpr unsigned index_size(std::uint32_t index) noexcept
{
    return index < first_long_index ? 2 : 4;
}

/// Writes big-endian values.
class Encoder {
public:
    /// @param expected  about how many bytes will be written, for the size of the runs
    Encoder(ByteSink& sink, std::uint64_t expected)
        : sink_(sink), capacity_(static_cast<std::size_t>(std::clamp(expected, least, most))),
          buffer_(std::make_unique_for_overwrite<std::byte[]>(capacity_))
    {}

    void u1(std::uint32_t value)
    {
        need(1);
        put(value);
    }

    void u2(std::uint32_t value)
    {
        need(2);
        put(value >> 8u);
        put(value);
    }

    void u4(std::uint32_t value)
    {
        need(4);
        put(value >> 24u);
        put(value >> 16u);
        put(value >> 8u);
        put(value);
    }

    void single(double value) { u4(narrow(value)); }

    void index(std::uint32_t value)
    {
        if (value < first_long_index)
            u2(value);
        else
            u4(0xFF000000u | value);
    }

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

    /// A text with its zero byte, and another where that makes the length even.
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
    static constexpr std::uint64_t least = 64;
    static constexpr std::uint64_t most = std::uint64_t{1} << 20u;

    void need(std::size_t count)
    {
        if (capacity_ - size_ < count)
            flush();
    }

    void put(std::uint32_t value) noexcept { buffer_[size_++] = static_cast<std::byte>(value); }

    ByteSink& sink_;
    std::size_t capacity_;
    std::unique_ptr<std::byte[]> buffer_;
    std::size_t size_ = 0;
};

/// Takes what an Encoder takes, and only counts the bytes.
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
