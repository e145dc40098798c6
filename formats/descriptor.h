// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

#include <unistd.h>

namespace formats {

/// Owns a file descriptor and closes it. A negative number means none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};

} // namespace formats
