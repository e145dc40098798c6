// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <unordered_map>
#include <vector>

#include "mesh/fourcc.h"

namespace modeler {

class Activation;

/// The names of the vertex maps that a command can list, by type: each name once, in order of first
/// appearance, foreground layers before background layers. Excludes maps that an open edit has
/// added. The strings stay valid as long as the activation.
class MapCatalog {
public:
    /// The names of one type, cached. Valid until the next call of `forget`.
    [[nodiscard]] std::span<const char* const> names(Activation& activation, mesh::FourCC type);

    /// Clears the cache, so that the next call reads the document again.
    void forget() noexcept { lists_.clear(); }

private:
    [[nodiscard]] std::vector<const char*> listed(Activation& activation, mesh::FourCC type);

    std::unordered_map<mesh::FourCC, std::vector<const char*>> lists_;
};

} // namespace modeler
