// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// The layers that an edit works on, and their selection state.
class Scope {
public:
    Scope(const mesh::Document& document, const std::vector<LayerRole>& roles);

    /// Indices of the layers that a selector (bits OPLYR_*) denotes, in document order. Empty for
    /// an invalid selector.
    [[nodiscard]] std::span<const std::uint32_t> layers(int selector) const noexcept;

    /// Whether this is a valid selector.
    [[nodiscard]] static bool valid(int selector) noexcept
    {
        return selector >= 1 && selector <= 3;
    }

    /// Whether the layer exists and its role makes it visible to commands.
    [[nodiscard]] bool sees(std::uint32_t layer) const noexcept
    {
        return layer < roles_.size() && takes_part(roles_[layer]);
    }

    /// Whether all polygons of the layer count as selected: true if no layer of its role has a
    /// selected polygon.
    [[nodiscard]] bool all_selected(std::uint32_t layer) const noexcept
    {
        return roles_[layer] == LayerRole::foreground ? !foreground_selected_
                                                      : !background_selected_;
    }

private:
    std::vector<LayerRole> roles_;
    std::vector<std::uint32_t> layers_[3]; ///< foreground, background, both
    bool foreground_selected_ = false;     ///< some foreground polygon is selected
    bool background_selected_ = false;
};

} // namespace modeler
