// SPDX-License-Identifier: MIT
#include "modeler/edit/undo_step.h"

#include <span>

namespace modeler {

UndoStep::UndoStep(const mesh::Document& document, std::size_t new_layers)
    : old_layers_(document.layers.size() - new_layers), tags_(document.tags.size())
{
    layers_.reserve(document.layers.size());
    for (const mesh::Layer& layer : document.layers)
        layers_.push_back({layer.points.size(), layer.polygons.mark(), layer.maps.size()});
}

void UndoStep::save_value(const mesh::Document& document, std::size_t layer, std::size_t map,
                          std::uint32_t point)
{
    if (map >= layers_[layer].maps || point >= layers_[layer].points)
        return;
    const mesh::VertexMap& values = document.layers[layer].maps[map];
    const std::size_t first = old_values_.size();
    old_values_.append(values.find(point));
    old_.push_back({layer, map, point, values.has(point), first});
}

bool UndoStep::changed(const mesh::Document& document) const
{
    if (!old_.empty() || document.tags.size() != tags_)
        return true;
    for (std::size_t i = 0; i < layers_.size(); ++i) {
        const mesh::Layer& layer = document.layers[i];
        if (layer.points.size() != layers_[i].points ||
            layer.polygons.size() != layers_[i].polygons.polygons ||
            layer.maps.size() != layers_[i].maps)
            return true;
    }
    return false;
}

void UndoStep::revert(mesh::Document& document) const
{
    while (document.layers.size() > old_layers_)
        document.layers.pop_back();
    for (std::size_t i = 0; i < old_layers_; ++i) {
        mesh::Layer& layer = document.layers[i];
        layer.polygons.truncate(layers_[i].polygons);
        layer.points.truncate(layers_[i].points);
        layer.maps.truncate(layers_[i].maps);
        for (mesh::VertexMap& map : layer.maps)
            map.truncate(static_cast<std::uint32_t>(layers_[i].points));
    }
    // In reverse order: if several values were saved for one point, the oldest must win.
    for (auto old = old_.rbegin(); old != old_.rend(); ++old) {
        mesh::VertexMap& map = document.layers[old->layer].maps[old->map];
        if (old->had)
            map.set(old->point, {old_values_.data() + old->first, map.dimension()});
        else
            map.erase(old->point);
    }
    document.tags.truncate(tags_);
}

} // namespace modeler
