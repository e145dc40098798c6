// SPDX-License-Identifier: MIT
#include "tests/support/failing_memory.h"

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string_view>

#include <link.h>

// NOLINTBEGIN(bugprone-reserved-identifier): names that the linker gives
extern "C" {
extern const char __executable_start;
extern const char etext;
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
void* __wrap_realloc(void* memory, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace support {

namespace {

// Plain words, so that looking at them allocates nothing.
thread_local bool counting = false;
thread_local std::size_t made = 0;
thread_local std::size_t failing = 0;

struct Range {
    const char* begin = nullptr;
    const char* end = nullptr;
};

int note_library(dl_phdr_info* library, std::size_t /*size*/, void* ranges)
{
    const std::string_view name = library->dlpi_name;
    for (const std::string_view wanted : {"libstdc++.so", "libfmt.so"}) {
        if (name.find(wanted) == std::string_view::npos)
            continue;
        Range* range = static_cast<Range*>(ranges);
        while (range->begin != nullptr)
            ++range;
        range->begin = range->end = reinterpret_cast<const char*>(library->dlpi_addr);
        for (int i = 0; i < library->dlpi_phnum; ++i)
            range->end = std::max(range->end, range->begin + library->dlpi_phdr[i].p_vaddr +
                                                  library->dlpi_phdr[i].p_memsz);
    }
    return 0;
}

/// Where the code lies whose allocations count.
struct OwnCode {
    OwnCode()
    {
        ranges[0] = {&__executable_start, &etext};
        dl_iterate_phdr(note_library, ranges);
    }
    Range ranges[4] = {};
};

bool is_own(const void* caller)
{
    static const OwnCode code;
    const auto* const at = static_cast<const char*>(caller);
    return std::any_of(std::begin(code.ranges), std::end(code.ranges),
                       [&](const Range& range) { return at >= range.begin && at < range.end; });
}

/// Counts an allocation. Returns true when it is the one that fails.
bool fails() { return counting && ++made == failing; }

} // namespace

FailingMemory::FailingMemory(std::size_t number) noexcept : number_(number)
{
    (void)is_own(nullptr); // looks at the libraries before it counts
    made = 0;
    failing = number;
    counting = true;
}

FailingMemory::~FailingMemory() { counting = false; }

bool FailingMemory::failed() const noexcept { return number_ != 0 && made >= number_; }

std::size_t FailingMemory::count() const noexcept { return made; }

} // namespace support

void* operator new(std::size_t size)
{
    if (support::counting && support::is_own(__builtin_return_address(0)) && support::fails())
        throw std::bad_alloc();
    void* const memory = __real_malloc(size == 0 ? 1 : size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    if (support::counting && support::is_own(__builtin_return_address(0)) && support::fails())
        return nullptr;
    return __real_malloc(size == 0 ? 1 : size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

void* __wrap_malloc(std::size_t size) { return support::fails() ? nullptr : __real_malloc(size); }
void* __wrap_calloc(std::size_t count, std::size_t size)
{
    return support::fails() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* memory, std::size_t size)
{
    return support::fails() ? nullptr : __real_realloc(memory, size);
}
