// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <utility>

namespace mesh {

/// A part that few objects of a kind have: where it is not there it takes a pointer's room, and
/// reads as an empty one. Copies are of their own.
template <typename T> class Rare {
public:
    Rare() = default;
    Rare(const Rare& other) : part_(other.part_ ? std::make_unique<T>(*other.part_) : nullptr) {}
    Rare(Rare&&) noexcept = default;
    Rare& operator=(Rare other) noexcept
    {
        part_.swap(other.part_);
        return *this;
    }
    ~Rare() = default;

    [[nodiscard]] bool is_there() const noexcept { return part_ != nullptr; }

    [[nodiscard]] const T& operator*() const noexcept { return part_ ? *part_ : none; }
    [[nodiscard]] const T* operator->() const noexcept { return &**this; }

    /// The part, to be changed; made where it is not there.
    [[nodiscard]] T& make()
    {
        if (!part_)
            part_ = std::make_unique<T>();
        return *part_;
    }

    /// The part, to be changed; null where it is not there.
    [[nodiscard]] T* there() noexcept { return part_.get(); }

    void reset() noexcept { part_.reset(); }

private:
    static inline const T none{};

    std::unique_ptr<T> part_;
};

} // namespace mesh
