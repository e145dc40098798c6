// SPDX-License-Identifier: MIT
#include "tests/support/allocations.h"

#include <cstdlib>
#include <new>

namespace support {

namespace {

Allocations counts;
std::size_t failing = 0; // number of the allocation that fails; 0: none
bool on_module_side = false;

void* allocate(std::size_t size)
{
    if (on_module_side) {
        ++counts.made;
        if (counts.made == failing) {
            --counts.made; // it was not made
            failing = 0;
            throw std::bad_alloc();
        }
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void release(void* memory) noexcept
{
    if (on_module_side && memory != nullptr)
        ++counts.freed;
    std::free(memory);
}

} // namespace

Allocations allocations() noexcept { return counts; }

void reset_allocations() noexcept { fail_allocation(0); }

void fail_allocation(std::size_t number) noexcept
{
    counts = {};
    failing = number;
}

ModuleSide::ModuleSide() noexcept : outer_(on_module_side) { on_module_side = true; }
ModuleSide::~ModuleSide() { on_module_side = outer_; }

HostSide::HostSide() noexcept : outer_(on_module_side) { on_module_side = false; }
HostSide::~HostSide() { on_module_side = outer_; }

} // namespace support

void* operator new(std::size_t size) { return support::allocate(size); }
void* operator new[](std::size_t size) { return support::allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    try {
        return support::allocate(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept
{
    return operator new(size, tag);
}
void operator delete(void* memory) noexcept { support::release(memory); }
void operator delete[](void* memory) noexcept { support::release(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { support::release(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { support::release(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    support::release(memory);
}
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    support::release(memory);
}
