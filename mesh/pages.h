// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mesh {

/// Has the system put memory behind the whole pages among `size` bytes, to be written to. Where it
/// cannot, it does so at the first touch.
void prepare_pages(void* begin, std::size_t size) noexcept;

} // namespace mesh
