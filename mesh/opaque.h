// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "mesh/fourcc.h"

namespace mesh {

/// A piece of the file that a document came from for which the mesh has no form of its own. It is
/// carried along so that saving loses nothing; only the room that read it knows what it means.
struct OpaqueChunk {
    FourCC id = 0;
    std::vector<std::byte> body;
};

} // namespace mesh
