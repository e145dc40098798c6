// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "mesh/pages.h"

namespace mesh {

/// Bytes from which on the memory of a block is new, and not what the program had before.
constexpr std::size_t large_block = std::size_t{1} << 20;

/// A growing contiguous array of plain values.
///
/// It grows by the C library's realloc, which moves the pages of a large block instead of copying
/// them: adding to an array of many millions neither copies what is there nor needs it twice.
/// Indices are not checked. All growth gives std::bad_alloc when memory ends, and then leaves the
/// contents as they were.
///
/// A large block is handed over page by page as it is written to, and each first touch of a page is
/// an interrupt that costs more than filling it. So the next stretch of a block is asked for in one
/// go, when the last one is full.
template <typename T> class Buffer {
    static_assert(std::is_trivially_copyable_v<T>, "realloc moves bytes");

public:
    Buffer() = default;
    Buffer(const Buffer& other) { append(other.span()); }
    Buffer(Buffer&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)),
          ready_(std::exchange(other.ready_, 0)), capacity_(std::exchange(other.capacity_, 0))
    {}
    Buffer& operator=(Buffer other) noexcept
    {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        std::swap(ready_, other.ready_);
        std::swap(capacity_, other.capacity_);
        return *this;
    }
    ~Buffer() { std::free(data_); }

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }
    /// How many values can be added at no cost.
    [[nodiscard]] std::size_t room() const noexcept { return ready_ - size_; }
    [[nodiscard]] T* data() noexcept { return data_; }
    [[nodiscard]] const T* data() const noexcept { return data_; }
    [[nodiscard]] T& operator[](std::size_t i) noexcept { return data_[i]; }
    [[nodiscard]] const T& operator[](std::size_t i) const noexcept { return data_[i]; }
    [[nodiscard]] T& back() noexcept { return data_[size_ - 1]; }
    [[nodiscard]] const T& back() const noexcept { return data_[size_ - 1]; }
    [[nodiscard]] std::span<const T> span() const noexcept { return {data_, size_}; }
    [[nodiscard]] const T* begin() const noexcept { return data_; }
    [[nodiscard]] const T* end() const noexcept { return data_ + size_; }

    /// Makes room for `count` values in all.
    void reserve(std::size_t count)
    {
        if (count > capacity_)
            reallocate(count);
    }

    /// The same for arrays that grow in small steps: now and then it makes room for half as much
    /// again.
    void reserve_more(std::size_t count)
    {
        if (count > ready_)
            grow(count);
    }

    void push_back(T value)
    {
        if (size_ == ready_)
            grow(size_ + 1);
        data_[size_++] = value;
    }

    /// Lengthens by `count` values, to be set through the pointer that is returned.
    [[nodiscard]] T* extend(std::size_t count)
    {
        if (count > ready_ - size_)
            grow(size_ + count);
        size_ += count;
        return data_ + size_ - count;
    }

    /// Appends a run of values that does not lie in this array.
    void append(std::span<const T> values)
    {
        if (values.empty())
            return;
        if (values.size() > ready_ - size_)
            grow(size_ + values.size());
        std::memcpy(data_ + size_, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Shortens or lengthens; new values are `fill`.
    void resize(std::size_t count, T fill = T())
    {
        if (count > ready_)
            grow(count);
        for (std::size_t i = size_; i < count; ++i)
            data_[i] = fill;
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
        if (values.size() > ready_ - size_)
            grow(size_ + values.size());
        std::memmove(data_ + at + values.size(), data_ + at, (size_ - at) * sizeof(T));
        std::memcpy(data_ + at, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Takes out `count` values from position `at` on.
    void erase(std::size_t at, std::size_t count) noexcept
    {
        if (count == 0)
            return;
        std::memmove(data_ + at, data_ + at + count, (size_ - at - count) * sizeof(T));
        size_ -= count;
    }

private:
    void grow(std::size_t needed)
    {
        if (needed > capacity_) {
            const std::size_t half_more = capacity_ + capacity_ / 2 + 16;
            reallocate(needed > half_more ? needed : half_more);
        }
        if (needed <= ready_)
            return;
        constexpr std::size_t stretch = (std::size_t{1} << 18) / sizeof(T) + 1;
        const std::size_t next = needed + std::min(stretch, capacity_ - needed);
        prepare_pages(data_ + ready_, (next - ready_) * sizeof(T));
        ready_ = next;
    }

    void reallocate(std::size_t capacity)
    {
        if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_alloc();
        void* const moved = std::realloc(static_cast<void*>(data_), capacity * sizeof(T));
        if (moved == nullptr)
            throw std::bad_alloc();
        data_ = static_cast<T*>(moved);
        capacity_ = capacity;
        if (capacity * sizeof(T) < large_block)
            ready_ = capacity;
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t ready_ = 0;    ///< values that the memory made ready so far holds
    std::size_t capacity_ = 0; ///< values that the block holds
};

} // namespace mesh
