// SPDX-License-Identifier: MIT
#include "modeler/host/read_only_data.h"

#include <cstddef>
#include <cstdint>
#include <new>

#include <link.h>

namespace modeler {

namespace {

struct Search {
    std::uintptr_t address;
    std::vector<std::span<const char>> found;
    bool out_of_memory = false;
};

/// Collects the read-only segments of a loaded file. Returns whether it contains the address.
bool look_at(const dl_phdr_info& file, Search& search)
{
    bool is_this_file = false;
    std::vector<std::span<const char>> parts;
    for (int i = 0; i < file.dlpi_phnum; ++i) {
        const ElfW(Phdr)& part = file.dlpi_phdr[i];
        if (part.p_type != PT_LOAD)
            continue;
        const std::uintptr_t begin = file.dlpi_addr + part.p_vaddr;
        is_this_file = is_this_file || search.address - begin < part.p_memsz;
        if ((part.p_flags & PF_W) == 0)
            // NOLINTNEXTLINE(performance-no-int-to-ptr): the loader gives addresses as integers
            parts.emplace_back(reinterpret_cast<const char*>(begin), part.p_memsz);
    }
    if (is_this_file)
        search.found.swap(parts);
    return is_this_file;
}

/// Callback of dl_iterate_phdr; a non-zero result ends the iteration. Catches exceptions, since
/// unwinding through the loader's frames would need memory.
int visit(dl_phdr_info* file, std::size_t /*size*/, void* data) noexcept
{
    auto& search = *static_cast<Search*>(data);
    try {
        return look_at(*file, search) ? 1 : 0;
    } catch (const std::bad_alloc&) {
        search.out_of_memory = true;
        return 1;
    }
}

} // namespace

std::vector<std::span<const char>> read_only_data(const void* address)
{
    Search search{reinterpret_cast<std::uintptr_t>(address), {}, false};
    (void)dl_iterate_phdr(&visit, &search);
    if (search.out_of_memory)
        throw std::bad_alloc();
    return search.found;
}

} // namespace modeler
