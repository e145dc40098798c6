// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

#include "mesh/layer.h"

namespace bench {

/// Reads a mesh of the comparison: an OBJ file with one texture coordinate for each point, and the
/// points' weights in comment lines that begin with "#w".
/// @throws std::runtime_error when it cannot be read.
[[nodiscard]] mesh::Layer read_peer_mesh(const std::filesystem::path& file);

} // namespace bench
