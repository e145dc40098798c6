// SPDX-License-Identifier: MIT
#include "desktop/window/selection.h"

namespace desktop {

namespace {

bool is_foreground(const modeler::Modeler& session, std::size_t layer)
{
    return session.roles()[layer] == modeler::LayerRole::foreground;
}

/// Calls `visit(layer, polygon)` for all polygons of the foreground. Skips a layer created by a
/// running command, which has no role yet.
template <typename Visit> void for_each_polygon(const modeler::Modeler& session, Visit visit)
{
    const auto& layers = session.document().layers;
    for (std::size_t layer = 0; layer < session.roles().size(); ++layer) {
        if (!is_foreground(session, layer))
            continue;
        for (std::size_t i = 0; i < layers[layer].polygons.size(); ++i)
            visit(layer, i);
    }
}

} // namespace

void select_polygons(modeler::Modeler& session, std::span<const PolygonRef> polygons,
                     SelectMode mode)
{
    if (mode == SelectMode::replace)
        select_all(session, false);
    for (const PolygonRef& one : polygons) {
        if (!is_foreground(session, one.layer))
            continue;
        const bool was_on = session.document().layers[one.layer].polygons.selected(one.polygon);
        const bool on = mode == SelectMode::toggle ? !was_on : mode != SelectMode::remove;
        session.select(one.layer, one.polygon, on);
    }
}

void select_all(modeler::Modeler& session, bool on)
{
    for_each_polygon(session, [&](std::size_t layer, std::size_t polygon) {
        session.select(layer, polygon, on);
    });
}

void invert_selection(modeler::Modeler& session)
{
    for_each_polygon(session, [&](std::size_t layer, std::size_t polygon) {
        session.select(layer, polygon,
                       !session.document().layers[layer].polygons.selected(polygon));
    });
}

std::size_t select_surface(modeler::Modeler& session, std::string_view surface)
{
    std::size_t count = 0;
    const mesh::Document& document = session.document();
    for_each_polygon(session, [&](std::size_t layer, std::size_t polygon) {
        const mesh::TagIndex tag = document.layers[layer].polygons.surface(polygon);
        const bool on = tag != mesh::no_tag && document.tags[tag] == surface;
        session.select(layer, polygon, on);
        count += on ? 1 : 0;
    });
    return count;
}

std::size_t selected_count(const modeler::Modeler& session)
{
    std::size_t count = 0;
    for_each_polygon(session, [&](std::size_t layer, std::size_t polygon) {
        count += session.document().layers[layer].polygons.selected(polygon) ? 1 : 0;
    });
    return count;
}

std::shared_ptr<const picture::PolygonMarks>
selection_marks(const modeler::Modeler& session, std::span<const std::size_t> document_layers)
{
    if (selected_count(session) == 0)
        return nullptr;
    picture::PolygonMarks marks(document_layers.size());
    for (std::size_t i = 0; i < document_layers.size(); ++i) {
        const std::size_t layer = document_layers[i];
        if (layer >= session.roles().size() || !is_foreground(session, layer))
            continue;
        const mesh::Polygons& polygons = session.document().layers[layer].polygons;
        marks[i].resize(polygons.size());
        for (std::size_t polygon = 0; polygon < polygons.size(); ++polygon)
            marks[i][polygon] = polygons.selected(polygon) ? 1 : 0;
    }
    return std::make_shared<const picture::PolygonMarks>(std::move(marks));
}

} // namespace desktop
