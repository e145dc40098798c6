// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Prefaults the whole pages within `size` bytes for writing, so that later writes cause no page
/// faults. Contents do not change. Failure is ignored: pages are then faulted in at the first
/// write.
void prefault_pages(void* begin, std::size_t size) noexcept;

/// Prefaults the whole pages within `size` bytes in the background (see PagePrefaulter), or
/// synchronously when that thread is busy or does not exist. The caller must call `cancel_prefault`
/// before it frees or moves the memory.
void prefault_pages_async(void* begin, std::size_t size) noexcept;

/// Cancels `prefault_pages_async` for this memory, or waits for it. Afterwards the memory is not
/// touched in the background.
void cancel_prefault(void* begin, std::size_t size) noexcept;

} // namespace mesh
