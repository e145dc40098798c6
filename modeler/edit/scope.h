// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "mesh/document.h"
#include "modeler/roles.h"

namespace modeler {

/// Which layers an edit works on, and what counts as selected in them.
class Scope {
public:
    Scope(const mesh::Document& document, const std::vector<LayerRole>& roles);

    /// Positions of the layers that a selector (bits OPLYR_*) names, in document order. Empty for
    /// anything that is no selector.
    [[nodiscard]] std::span<const std::uint32_t> layers(int selector) const noexcept;

    /// Whether a selector names layers at all.
    [[nodiscard]] static bool valid(int selector) noexcept
    {
        return selector >= 1 && selector <= 3;
    }

    /// Whether an edit sees the layer: it is there and takes part.
    [[nodiscard]] bool sees(std::uint32_t layer) const noexcept
    {
        return layer < roles_.size() && takes_part(roles_[layer]);
    }

    /// Whether the layer counts as selected as a whole, because nothing is selected in all the
    /// layers of its role.
    [[nodiscard]] bool all_selected(std::uint32_t layer) const noexcept
    {
        return roles_[layer] == LayerRole::foreground ? !foreground_selected_
                                                      : !background_selected_;
    }

private:
    std::vector<LayerRole> roles_;
    std::vector<std::uint32_t> layers_[3]; ///< foreground, background, both
    bool foreground_selected_ = false;     ///< some polygon of these layers is selected
    bool background_selected_ = false;
};

} // namespace modeler
