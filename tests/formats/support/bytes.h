// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <vector>

namespace test {

/// Big-endian bytes put together by hand, so that tests do not lean on the encoder they test.
class Bytes {
public:
    Bytes() = default;

    Bytes& u1(unsigned value)
    {
        bytes_.push_back(static_cast<std::byte>(value));
        return *this;
    }
    Bytes& u2(unsigned value) { return u1(value >> 8u).u1(value); }
    Bytes& u4(std::uint32_t value) { return u2(value >> 16u).u2(value); }
    Bytes& f4(float value) { return u4(std::bit_cast<std::uint32_t>(value)); }
    Bytes& vec(float x, float y, float z) { return f4(x).f4(y).f4(z); }
    Bytes& index(std::uint32_t value)
    {
        return value < 0xFF00 ? u2(value) : u4(0xFF000000u | value);
    }
    /// The characters as they are.
    Bytes& raw(std::string_view text)
    {
        for (const char c : text)
            u1(static_cast<unsigned char>(c));
        return *this;
    }
    /// A text with its zero, made even.
    Bytes& text(std::string_view text)
    {
        raw(text).u1(0);
        return text.size() % 2 == 0 ? u1(0) : *this;
    }
    Bytes& add(const Bytes& other)
    {
        bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
        return *this;
    }
    Bytes& add(std::initializer_list<Bytes> others)
    {
        for (const Bytes& other : others)
            add(other);
        return *this;
    }

    [[nodiscard]] std::size_t size() const { return bytes_.size(); }
    [[nodiscard]] const std::vector<std::byte>& get() const { return bytes_; }

private:
    std::vector<std::byte> bytes_;
};

/// A chunk with its size and, where that is odd, a filler.
inline Bytes chunk(std::string_view id, const Bytes& body)
{
    Bytes result;
    result.raw(id).u4(static_cast<std::uint32_t>(body.size())).add(body);
    return body.size() % 2 == 0 ? result : result.u1(0);
}

/// A part of a chunk, whose size takes two bytes.
inline Bytes sub_chunk(std::string_view id, const Bytes& body)
{
    Bytes result;
    result.raw(id).u2(static_cast<unsigned>(body.size())).add(body);
    return body.size() % 2 == 0 ? result : result.u1(0);
}

/// A whole file.
inline std::vector<std::byte> form(std::initializer_list<Bytes> chunks,
                                   std::string_view type = "LWO2")
{
    Bytes content;
    content.raw(type).add(chunks);
    Bytes file;
    file.raw("FORM").u4(static_cast<std::uint32_t>(content.size())).add(content);
    return file.get();
}

} // namespace test
