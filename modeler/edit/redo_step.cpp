// SPDX-License-Identifier: MIT
#include "modeler/edit/redo_step.h"

#include <span>

namespace modeler {

RedoStep::RedoStep(const mesh::Document& document, UndoStep undo) : undo_(std::move(undo))
{
    for (std::size_t i = undo_.old_layers(); i < undo_.layers(); ++i)
        new_layers_.push_back({document.layers[i].name, document.layers[i].number});
    tails_.reserve(undo_.layers());
    for (std::size_t i = 0; i < undo_.layers(); ++i)
        tails_.push_back(tail_of(document, i));
    for (auto tag = static_cast<mesh::TagIndex>(undo_.tags()); tag < document.tags.size(); ++tag)
        texts_.push_back(document.tags[tag]);
    undo_.for_each_saved([&](std::size_t layer, std::size_t map, std::uint32_t point) {
        const mesh::VertexMap& values = document.layers[layer].maps[map];
        const std::span<const float> value = values.find(point);
        values_.push_back({layer, map, point, {value.begin(), value.end()}, values.has(point)});
    });
}

RedoStep::LayerTail RedoStep::tail_of(const mesh::Document& document, std::size_t layer) const
{
    const mesh::Layer& from = document.layers[layer];
    const std::size_t first_point = undo_.points(layer);
    LayerTail tail;
    tail.points.append(from.points.span().subspan(first_point));
    for (const mesh::FourCC kind : from.polygons.other_tag_kinds())
        tail.tags.push_back({kind, {}});
    for (std::size_t i = undo_.polygons(layer); i < from.polygons.size(); ++i) {
        const std::span<const std::uint32_t> corners = from.polygons.points(i);
        tail.types.push_back(from.polygons.type(i));
        tail.corner_counts.push_back(static_cast<std::uint32_t>(corners.size()));
        tail.corners.append(corners);
        tail.surfaces.push_back(from.polygons.surface(i));
        tail.flags.push_back(from.polygons.flags(i));
        tail.selected.push_back(from.polygons.selected(i) ? 1 : 0);
        for (TagTail& tags : tail.tags)
            tags.of_polygon.push_back(from.polygons.tag(tags.kind, i));
    }
    for (std::size_t i = 0; i < undo_.maps(layer); ++i) {
        MapTail values;
        from.maps[i].for_each([&](std::uint32_t point, std::span<const float> value) {
            if (point < first_point)
                return;
            values.points.push_back(point);
            values.values.append(value);
        });
        tail.old_maps.push_back(std::move(values));
    }
    for (std::size_t i = undo_.maps(layer); i < from.maps.size(); ++i)
        tail.new_maps.push_back(from.maps[i]);
    return tail;
}

void RedoStep::add_to(mesh::Layer& layer, const LayerTail& tail) const
{
    layer.points.append(tail.points.span());
    const std::size_t first = layer.polygons.size();
    std::size_t corner = 0;
    for (std::size_t i = 0; i < tail.types.size(); ++i) {
        const std::size_t count = tail.corner_counts[i];
        layer.polygons.add(tail.types[i], tail.corners.span().subspan(corner, count));
        layer.polygons.set_surface(first + i, tail.surfaces[i]);
        layer.polygons.set_flags(first + i, tail.flags[i]);
        layer.polygons.select(first + i, tail.selected[i] != 0);
        corner += count;
    }
    for (const TagTail& tags : tail.tags)
        for (std::size_t i = 0; i < tags.of_polygon.size(); ++i)
            if (tags.of_polygon[i] != mesh::no_tag)
                layer.polygons.set_tag(tags.kind, first + i, tags.of_polygon[i]);
    for (std::size_t i = 0; i < tail.old_maps.size(); ++i) {
        mesh::VertexMap& map = layer.maps[i];
        const MapTail& values = tail.old_maps[i];
        for (std::size_t row = 0; row < values.points.size(); ++row)
            map.set(values.points[row],
                    values.values.span().subspan(row * map.dimension(), map.dimension()));
    }
    for (const mesh::VertexMap& map : tail.new_maps)
        layer.maps.push_back(map);
}

void RedoStep::apply(mesh::Document& document) const
{
    try {
        for (const std::string& text : texts_)
            document.tags.append(text);
        for (const NewLayer& layer : new_layers_) {
            mesh::Layer& added = document.layers.emplace_back();
            added.name = layer.name;
            added.number = layer.number;
        }
        for (std::size_t i = 0; i < tails_.size(); ++i)
            add_to(document.layers[i], tails_[i]);
        for (const NewValue& value : values_) {
            mesh::VertexMap& map = document.layers[value.layer].maps[value.map];
            if (value.has)
                map.set(value.point, value.value);
            else
                map.erase(value.point);
        }
    } catch (...) {
        undo_.revert(document);
        throw;
    }
}

} // namespace modeler
