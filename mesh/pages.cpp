// SPDX-License-Identifier: MIT
#include "mesh/pages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

#include "mesh/page_helper.h"

namespace mesh {

void prepare_pages(void* begin, std::size_t size) noexcept
{
#ifdef MADV_POPULATE_WRITE
    static const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto from = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (from + page - 1) / page * page;
    const std::uintptr_t last = (from + size) / page * page;
    if (first < last) // what fails is left to the first touch
        (void)madvise(static_cast<std::byte*>(begin) + (first - from), last - first,
                      MADV_POPULATE_WRITE);
#else
    (void)begin;
    (void)size;
#endif
}

void prepare_pages_ahead(void* begin, std::size_t size) noexcept
{
    PageHelper* const helper = PageHelper::of_the_process();
    if (helper == nullptr || !helper->take({begin, size}))
        prepare_pages(begin, size);
}

void withdraw_pages(void* begin, std::size_t size) noexcept
{
    if (PageHelper* const helper = PageHelper::of_the_process())
        helper->withdraw({begin, size});
}

} // namespace mesh
