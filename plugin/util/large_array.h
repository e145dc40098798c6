// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>

namespace dastrel {

/// An array of fixed size for random access. Large ones are aligned to huge pages (2 MiB), so that
/// the system can map them as such.
template <typename Value> class large_array {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    /// The values are left uninitialised on purpose.
    explicit large_array(std::size_t count)
        : values(static_cast<Value*>(::operator new(count * sizeof(Value), alignment(count))),
                 release{alignment(count)}),
          length(count)
    {}

    large_array(std::size_t count, const Value& filling) : large_array(count) { fill(filling); }

    void fill(const Value& filling) { std::uninitialized_fill_n(values.get(), length, filling); }

    Value& operator[](std::size_t i) { return values.get()[i]; }
    const Value& operator[](std::size_t i) const { return values.get()[i]; }
    std::size_t size() const { return length; }

private:
    struct release {
        std::align_val_t aligned;
        void operator()(Value* memory) const { ::operator delete(memory, aligned); }
    };

    static std::align_val_t alignment(std::size_t count)
    {
        constexpr std::size_t huge_page = std::size_t{2} << 20;
        constexpr std::size_t line = 64;
        return std::align_val_t{count * sizeof(Value) >= huge_page
                                    ? huge_page
                                    : std::max<std::size_t>(alignof(Value), line)};
    }

    std::unique_ptr<Value, release> values;
    std::size_t length = 0;
};

} // namespace dastrel
