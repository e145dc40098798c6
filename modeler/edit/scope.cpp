// SPDX-License-Identifier: MIT
#include "modeler/edit/scope.h"

namespace modeler {

namespace {

bool any_selected(const mesh::Polygons& polygons) noexcept
{
    for (std::size_t i = 0; i < polygons.size(); ++i)
        if (polygons.selected(i))
            return true;
    return false;
}

} // namespace

Scope::Scope(const mesh::Document& document, const std::vector<LayerRole>& roles) : roles_(roles)
{
    for (std::uint32_t i = 0; i < roles.size(); ++i) {
        if (!takes_part(roles[i]))
            continue;
        const bool in_front = roles[i] == LayerRole::foreground;
        layers_[in_front ? 0 : 1].push_back(i);
        layers_[2].push_back(i);
        bool& selected = in_front ? foreground_selected_ : background_selected_;
        selected = selected || any_selected(document.layers[i].polygons);
    }
}

std::span<const std::uint32_t> Scope::layers(int selector) const noexcept
{
    if (!valid(selector))
        return {};
    return layers_[selector - 1];
}

} // namespace modeler
