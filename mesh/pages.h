// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Has the system put memory behind the whole pages among `size` bytes, to be written to. Where it
/// cannot, it does so at the first touch. Contents do not change.
void prepare_pages(void* begin, std::size_t size) noexcept;

/// The same while the caller goes on, in a thread that the first call starts; where that one is
/// busy or cannot be had, at once. The memory may have been given back by the time that it is its
/// turn.
void prepare_pages_ahead(void* begin, std::size_t size) noexcept;

} // namespace mesh
