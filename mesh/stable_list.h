// SPDX-License-Identifier: MIT
#pragma once

#include <bit>
#include <compare>
#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

namespace mesh {

/// A random-access list with stable addresses: appending moves no element, so pointers and
/// iterators stay valid. An empty list allocates nothing.
///
/// The elements are stored in blocks, each with the capacity of all preceding blocks together.
/// Indices are not checked.
template <typename T> class StableList {
    template <typename List, typename Value> class Iterator;

public:
    using value_type = T;
    using iterator = Iterator<StableList, T>;
    using const_iterator = Iterator<const StableList, const T>;

    StableList() = default;
    StableList(const StableList& other)
    {
        for (const T& element : other)
            push_back(element);
    }
    StableList(StableList&& other) noexcept
        : blocks_(std::exchange(other.blocks_, {})), size_(std::exchange(other.size_, 0))
    {}
    StableList& operator=(StableList other) noexcept
    {
        blocks_.swap(other.blocks_);
        std::swap(size_, other.size_);
        return *this;
    }
    ~StableList() = default;

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] bool empty() const noexcept { return size_ == 0; }

    [[nodiscard]] const T& operator[](std::size_t i) const noexcept
    {
        const auto block = static_cast<std::size_t>(std::bit_width(i));
        return blocks_[block][i - first_of(block)];
    }
    [[nodiscard]] T& operator[](std::size_t i) noexcept
    {
        return const_cast<T&>(std::as_const(*this)[i]);
    }
    [[nodiscard]] T& front() noexcept { return (*this)[0]; }
    [[nodiscard]] const T& front() const noexcept { return (*this)[0]; }
    [[nodiscard]] T& back() noexcept { return (*this)[size_ - 1]; }
    [[nodiscard]] const T& back() const noexcept { return (*this)[size_ - 1]; }

    [[nodiscard]] iterator begin() noexcept { return {this, 0}; }
    [[nodiscard]] iterator end() noexcept { return {this, size_}; }
    [[nodiscard]] const_iterator begin() const noexcept { return {this, 0}; }
    [[nodiscard]] const_iterator end() const noexcept { return {this, size_}; }

    /// Constructs an element at the end. @throws std::bad_alloc; the list is then unchanged.
    template <typename... Arguments> T& emplace_back(Arguments&&... arguments)
    {
        const auto block = static_cast<std::size_t>(std::bit_width(size_));
        if (block == blocks_.size()) {
            std::vector<T> added;
            added.reserve(block == 0 ? 1 : first_of(block));
            blocks_.push_back(std::move(added));
        }
        T& element = blocks_[block].emplace_back(std::forward<Arguments>(arguments)...);
        ++size_;
        return element;
    }
    void push_back(const T& element) { emplace_back(element); }
    void push_back(T&& element) { emplace_back(std::move(element)); }

    void pop_back() noexcept { truncate(size_ - 1); }

    /// Removes the elements from index `count` on.
    void truncate(std::size_t count) noexcept
    {
        while (size_ > count) {
            blocks_[static_cast<std::size_t>(std::bit_width(size_ - 1))].pop_back();
            --size_;
        }
        blocks_.resize(static_cast<std::size_t>(size_ == 0 ? 0 : std::bit_width(size_ - 1) + 1));
    }
    void clear() noexcept { truncate(0); }

    /// Changes the size; new elements are default-constructed.
    void resize(std::size_t count)
    {
        truncate(count < size_ ? count : size_);
        while (size_ < count)
            emplace_back();
    }

private:
    /// A random-access iterator: list and index. Stays valid as the list grows.
    template <typename List, typename Value> class Iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = Value*;
        using reference = Value&;

        Iterator() = default;
        Iterator(List* list, std::size_t at) noexcept : list_(list), at_(at) {}
        /// Converts an iterator to a const_iterator.
        template <typename Other>
        requires std::is_const_v<List> && std::is_same_v<Other, iterator>
        Iterator(const Other& other) // NOLINT(google-explicit-constructor): a widening conversion
        noexcept : list_(other.list_), at_(other.at_) {}

        reference operator*() const noexcept { return (*list_)[at_]; }
        pointer operator->() const noexcept { return &(*list_)[at_]; }
        reference operator[](difference_type by) const noexcept { return *(*this + by); }

        Iterator& operator+=(difference_type by) noexcept
        {
            at_ += static_cast<std::size_t>(by);
            return *this;
        }
        Iterator& operator-=(difference_type by) noexcept { return *this += -by; }
        Iterator& operator++() noexcept { return *this += 1; }
        Iterator& operator--() noexcept { return *this += -1; }
        Iterator operator++(int) noexcept { return std::exchange(*this, *this + 1); }
        Iterator operator--(int) noexcept { return std::exchange(*this, *this - 1); }

        friend Iterator operator+(Iterator iterator, difference_type by) noexcept
        {
            return iterator += by;
        }
        friend Iterator operator+(difference_type by, Iterator iterator) noexcept
        {
            return iterator += by;
        }
        friend Iterator operator-(Iterator iterator, difference_type by) noexcept
        {
            return iterator -= by;
        }
        friend difference_type operator-(const Iterator& a, const Iterator& b) noexcept
        {
            return static_cast<difference_type>(a.at_ - b.at_);
        }
        friend bool operator==(const Iterator& a, const Iterator& b) noexcept
        {
            return a.at_ == b.at_;
        }
        friend auto operator<=>(const Iterator& a, const Iterator& b) noexcept
        {
            return a.at_ <=> b.at_;
        }

    private:
        template <typename, typename> friend class Iterator;

        List* list_ = nullptr;
        std::size_t at_ = 0;
    };

    /// Index of a block's first element. Except for block 0, also the block's capacity.
    [[nodiscard]] static std::size_t first_of(std::size_t block) noexcept
    {
        return block == 0 ? 0 : std::size_t{1} << (block - 1);
    }

    std::vector<std::vector<T>> blocks_;
    std::size_t size_ = 0;
};

} // namespace mesh
