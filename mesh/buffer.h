// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

#include "mesh/block.h"

namespace mesh {

/// A growing contiguous array of plain values.
///
/// It grows by the C library's realloc, which moves the pages of a large block instead of copying
/// them: adding to an array of many millions neither copies what is there nor needs it twice.
/// Indices are not checked. All growth gives std::bad_alloc when memory ends, and then leaves the
/// contents as they were.
///
/// A large block is handed over page by page as it is written to, and each first touch of a page is
/// an interrupt that costs more than filling it. So the next stretch of a block is asked for in one
/// go while the one before it is filled.
template <typename T> class Buffer {
    static_assert(std::is_trivially_copyable_v<T>, "realloc moves bytes");

public:
    Buffer() = default;
    Buffer(const Buffer& other) { append(other.span()); }
    Buffer(Buffer&& other) noexcept
        : block_(std::exchange(other.block_, Block())), size_(std::exchange(other.size_, 0))
    {}
    Buffer& operator=(Buffer other) noexcept
    {
        std::swap(block_, other.block_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~Buffer()
    {
        if (block_.data != nullptr)
            release(block_, sizeof(T));
    }

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
    /// How many values can be added at no cost.
    [[nodiscard]] std::size_t room() const noexcept { return block_.ready - size_; }
    [[nodiscard]] T* data() noexcept { return static_cast<T*>(block_.data); }
    [[nodiscard]] const T* data() const noexcept { return static_cast<const T*>(block_.data); }
    [[nodiscard]] T& operator[](std::size_t i) noexcept { return data()[i]; }
    [[nodiscard]] const T& operator[](std::size_t i) const noexcept { return data()[i]; }
    [[nodiscard]] T& back() noexcept { return data()[size_ - 1]; }
    [[nodiscard]] const T& back() const noexcept { return data()[size_ - 1]; }
    [[nodiscard]] std::span<const T> span() const noexcept { return {data(), size_}; }
    [[nodiscard]] const T* begin() const noexcept { return data(); }
    [[nodiscard]] const T* end() const noexcept { return data() + size_; }

    /// Makes room for `count` values in all.
    void reserve(std::size_t count)
    {
        if (count > block_.capacity)
            reallocate(block_, count, sizeof(T));
    }

    /// The same for arrays that grow in small steps: now and then it makes room for half as much
    /// again.
    void reserve_more(std::size_t count)
    {
        if (count > block_.ready)
            grow(count);
    }

    void push_back(T value)
    {
        if (size_ == block_.ready)
            grow(size_ + 1);
        data()[size_++] = value;
    }

    /// Lengthens by `count` values, to be set through the pointer that is returned.
    [[nodiscard]] T* extend(std::size_t count)
    {
        if (count > block_.ready - size_)
            grow(size_ + count);
        size_ += count;
        return data() + size_ - count;
    }

    /// Appends a run of values that does not lie in this array.
    void append(std::span<const T> values)
    {
        if (values.empty())
            return;
        if (values.size() > block_.ready - size_)
            grow(size_ + values.size());
        std::memcpy(data() + size_, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Shortens or lengthens; new values are `fill`.
    void resize(std::size_t count, T fill = T())
    {
        if (count > block_.ready)
            grow(count);
        for (std::size_t i = size_; i < count; ++i)
            data()[i] = fill;
        size_ = count;
    }

    /// Drops everything from `count` on; keeps the memory.
    void truncate(std::size_t count) noexcept
    {
        if (count < size_)
            size_ = count;
    }

    /// Puts `values` before position `at`, moving what follows.
    void insert(std::size_t at, std::span<const T> values)
    {
        if (values.empty())
            return;
        if (values.size() > block_.ready - size_)
            grow(size_ + values.size());
        std::memmove(data() + at + values.size(), data() + at, (size_ - at) * sizeof(T));
        std::memcpy(data() + at, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Takes out `count` values from position `at` on.
    void erase(std::size_t at, std::size_t count) noexcept
    {
        if (count == 0)
            return;
        std::memmove(data() + at, data() + at + count, (size_ - at - count) * sizeof(T));
        size_ -= count;
    }

private:
    void grow(std::size_t needed) { mesh::grow(block_, needed, sizeof(T)); }

    Block block_;
    std::size_t size_ = 0;
};

} // namespace mesh
