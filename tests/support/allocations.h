// SPDX-License-Identifier: MIT
/// Counts what the module allocates, and lets its memory run out. Linking this replaces the global
/// operators new and delete of the program.
#pragma once

#include <cstddef>

namespace support {

/// What the module did since `reset_allocations`. Only calls made on the module's side count.
struct Allocations {
    std::size_t made = 0;
    std::size_t freed = 0;
};

[[nodiscard]] Allocations allocations() noexcept;

/// Starts counting anew; nothing fails.
void reset_allocations() noexcept;

/// Starts counting anew and lets the `number`-th allocation (from 1) of the module, and none
/// after it, fail with std::bad_alloc.
void fail_allocation(std::size_t number) noexcept;

/// While it lives the running code is the module's: its allocations count and may fail.
class ModuleSide {
public:
    ModuleSide() noexcept;
    ModuleSide(const ModuleSide&) = delete;
    ModuleSide& operator=(const ModuleSide&) = delete;
    ~ModuleSide();

private:
    bool outer_;
};

/// While it lives the running code is the host's or the test's.
class HostSide {
public:
    HostSide() noexcept;
    HostSide(const HostSide&) = delete;
    HostSide& operator=(const HostSide&) = delete;
    ~HostSide();

private:
    bool outer_;
};

} // namespace support
