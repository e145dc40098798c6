// SPDX-License-Identifier: MIT
/// Lets one allocation of the program's own code fail, whether by operator new, malloc, calloc or
/// realloc. Linking `failing_memory` replaces the global operators new and delete, and what the
/// program's own object files call of the others. Allocations that other shared libraries ask for
/// (Qt, Embree, a loaded module) neither count nor fail; those of the C++ library and of fmt, which
/// stand in for our own code, do.
#pragma once

#include <cstddef>

namespace support {

/// While it lives, allocations of this thread are counted, and the `number`-th of them (from 1; 0:
/// none) fails. One at a time.
class FailingMemory {
public:
    explicit FailingMemory(std::size_t number) noexcept;
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory();

    /// Whether the allocation that was to fail was asked for.
    [[nodiscard]] bool failed() const noexcept;
    /// Allocations so far, the failed one included.
    [[nodiscard]] std::size_t count() const noexcept;

private:
    std::size_t number_;
};

} // namespace support
