// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <type_traits>

namespace dastrel {

/// An array of fixed size for access at random places: large ones begin where a huge page does, so
/// that a system which gives them of itself can.
template <typename Value> class large_array {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    /// Values are left as the memory holds them: to be written before they are read.
    explicit large_array(std::size_t count) : values(allocate(count)), length(count) {}

    large_array(std::size_t count, const Value& filling) : large_array(count)
    {
        std::uninitialized_fill_n(values.get(), count, filling);
    }

    Value& operator[](std::size_t i) { return values.get()[i]; }
    const Value& operator[](std::size_t i) const { return values.get()[i]; }
    std::size_t size() const { return length; }

private:
    struct release {
        void operator()(Value* memory) const { std::free(memory); }
    };

    static Value* allocate(std::size_t count)
    {
        constexpr std::size_t page = std::size_t{2} << 20;
        const std::size_t bytes = count * sizeof(Value);
        const std::size_t alignment =
            bytes >= page ? page : std::max<std::size_t>(alignof(Value), 64);
        const std::size_t rounded = (bytes + alignment - 1) / alignment * alignment;
        void* const memory = std::aligned_alloc(alignment, rounded);
        if (memory == nullptr)
            throw std::bad_alloc();
        return static_cast<Value*>(memory);
    }

    std::unique_ptr<Value[], release> values;
    std::size_t length = 0;
};

} // namespace dastrel
