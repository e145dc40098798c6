// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <unordered_map>
#include <vector>

#include "mesh/fourcc.h"

namespace modeler {

class Activation;

/// The names of the vertex maps that a command is told of, by type: in order of first appearance,
/// foreground layers before background layers, each name once. Maps that an open edit has added are
/// not among them. The texts stay valid as long as the activation.
class MapCatalog {
public:
    /// Valid until the next call of `forget`.
    [[nodiscard]] std::span<const char* const> names(Activation& activation, mesh::FourCC type);

    /// Makes the next call look at the document again.
    void forget() noexcept { lists_.clear(); }

private:
    [[nodiscard]] std::vector<const char*> listed(Activation& activation, mesh::FourCC type);

    std::unordered_map<mesh::FourCC, std::vector<const char*>> lists_;
};

} // namespace modeler
