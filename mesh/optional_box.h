// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

namespace mesh {

/// An optional value on the heap, for members that few objects have: an empty one costs a pointer.
/// Reading an empty one gives a default-constructed value. Copies are deep.
template <typename T> class OptionalBox {
public:
    OptionalBox() = default;
    OptionalBox(const OptionalBox& other)
        : part_(other.part_ ? std::make_unique<T>(*other.part_) : nullptr)
    {}
    OptionalBox(OptionalBox&&) noexcept = default;
    OptionalBox& operator=(OptionalBox other) noexcept
    {
        part_.swap(other.part_);
        return *this;
    }
    ~OptionalBox() = default;

    [[nodiscard]] bool has_value() const noexcept { return part_ != nullptr; }

    [[nodiscard]] const T& operator*() const noexcept { return part_ ? *part_ : none; }
    [[nodiscard]] const T* operator->() const noexcept { return &**this; }

    /// The value for changing; default-constructs it when there is none.
    [[nodiscard]] T& get_or_create()
    {
        if (!part_)
            part_ = std::make_unique<T>();
        return *part_;
    }

    /// The value for changing, or null.
    [[nodiscard]] T* get() noexcept { return part_.get(); }

    void reset() noexcept { part_.reset(); }

private:
    static inline const T none{};

    std::unique_ptr<T> part_;
};

} // namespace mesh
