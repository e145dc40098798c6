// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Has the system put memory behind the whole pages among `size` bytes, to be written to. Where it
/// cannot, it does so at the first touch. Contents do not change.
void prepare_pages(void* begin, std::size_t size) noexcept;

/// The same while the caller goes on, in a thread that the first call starts; where that one is
/// busy or cannot be had, at once. To be withdrawn before the memory is given back or moved.
void prepare_pages_ahead(void* begin, std::size_t size) noexcept;

/// Ends the work of `prepare_pages_ahead` on this memory, which is the caller's alone from then on.
void withdraw_pages(void* begin, std::size_t size) noexcept;

} // namespace mesh
