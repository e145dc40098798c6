// SPDX-License-Identifier: MIT
#include "mesh/pages.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

#include "mesh/page_prefaulter.h"

namespace mesh {

void prefault_pages(void* begin, std::size_t size) noexcept
{
#ifdef MADV_POPULATE_WRITE
    static const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto from = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (from + page - 1) / page * page;
    const std::uintptr_t last = (from + size) / page * page;
    if (first < last) // failure is harmless: the first write faults the page in
        (void)madvise(static_cast<std::byte*>(begin) + (first - from), last - first,
                      MADV_POPULATE_WRITE);
#else
    (void)begin;
    (void)size;
#endif
}

void prefault_pages_async(void* begin, std::size_t size) noexcept
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr || !helper->try_post({begin, size}))
        prefault_pages(begin, size);
}

void cancel_prefault(void* begin, std::size_t size) noexcept
{
    if (PagePrefaulter* const helper = PagePrefaulter::instance())
        helper->cancel({begin, size});
}

} // namespace mesh
