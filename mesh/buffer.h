// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

#include "mesh/block.h"

namespace mesh {

/// A dynamic array of trivially copyable values, like std::vector.
///
/// It grows with realloc, which remaps the pages of a large allocation instead of copying them.
/// Indices are not checked. Functions that grow the array throw std::bad_alloc when out of memory
/// and then leave the contents unchanged. Growth invalidates pointers and spans into the array.
///
/// The first write to each page of a large allocation causes a page fault, which costs more than
/// filling the page. So the pages behind the end are prefaulted in the background (mesh/pages.h).
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
    /// Number of values that can be appended without growing.
    [[nodiscard]] std::size_t spare_capacity() const noexcept { return block_.prefaulted - size_; }
    [[nodiscard]] T* data() noexcept { return static_cast<T*>(block_.data); }
    [[nodiscard]] const T* data() const noexcept { return static_cast<const T*>(block_.data); }
    [[nodiscard]] T& operator[](std::size_t i) noexcept { return data()[i]; }
    [[nodiscard]] const T& operator[](std::size_t i) const noexcept { return data()[i]; }
    [[nodiscard]] T& back() noexcept { return data()[size_ - 1]; }
    [[nodiscard]] const T& back() const noexcept { return data()[size_ - 1]; }
    [[nodiscard]] std::span<const T> span() const noexcept { return {data(), size_}; }
    [[nodiscard]] const T* begin() const noexcept { return data(); }
    [[nodiscard]] const T* end() const noexcept { return data() + size_; }

    /// Raises the capacity to at least `count` values, exactly.
    void reserve(std::size_t count)
    {
        if (count > block_.capacity)
            reallocate(block_, count, sizeof(T));
    }

    /// Raises the capacity to at least `count` values, with amortised (geometric) growth. For
    /// arrays that are reserved in small steps.
    void reserve_more(std::size_t count)
    {
        if (count > block_.prefaulted)
            grow(count);
    }

    void push_back(T value)
    {
        if (size_ == block_.prefaulted)
            grow(size_ + 1);
        data()[size_++] = value;
    }

    /// Appends `count` uninitialised values and returns a pointer to the first; the caller sets
    /// them.
    [[nodiscard]] T* extend(std::size_t count)
    {
        if (count > block_.prefaulted - size_)
            grow(size_ + count);
        size_ += count;
        return data() + size_ - count;
    }

    /// Appends values, which must not lie in this array.
    void append(std::span<const T> values)
    {
        if (values.empty())
            return;
        if (values.size() > block_.prefaulted - size_)
            grow(size_ + values.size());
        std::memcpy(data() + size_, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Changes the size; new values are `fill`.
    void resize(std::size_t count, T fill = T())
    {
        if (count > block_.prefaulted)
            grow(count);
        for (std::size_t i = size_; i < count; ++i)
            data()[i] = fill;
        size_ = count;
    }

    /// Removes the values from index `count` on; keeps the capacity.
    void truncate(std::size_t count) noexcept
    {
        if (count < size_)
            size_ = count;
    }

    /// Inserts `values` before index `at`.
    void insert(std::size_t at, std::span<const T> values)
    {
        if (values.empty())
            return;
        if (values.size() > block_.prefaulted - size_)
            grow(size_ + values.size());
        std::memmove(data() + at + values.size(), data() + at, (size_ - at) * sizeof(T));
        std::memcpy(data() + at, values.data(), values.size() * sizeof(T));
        size_ += values.size();
    }

    /// Removes `count` values from index `at` on.
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
