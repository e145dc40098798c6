// SPDX-License-Identifier: MIT
#include "tests/whole/comparison.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace whole {

namespace {

template <typename Number> bool same(Number a, Number b) { return a == b || (a != a && b != b); }

template <typename Number> std::string text(Number value)
{
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr};
}

/// Collects differences; the first hundred say enough.
class Report {
public:
    void add(const std::string& line)
    {
        if (lines.size() < 100)
            lines.push_back(line);
    }

    template <typename A, typename B> void expect(const std::string& what, A real, B expected)
    {
        if (real != expected)
            add(what + ": " + text(real) + " instead of " + text(expected));
    }

    std::vector<std::string> lines;
};

void compare_points(const mesh::Layer& layer, std::size_t first, const literal::Result& expected,
                    Report& report)
{
    for (std::size_t i = 0; i < expected.points.size(); ++i) {
        const mesh::Vec3& real = layer.points[first + i];
        const literal::Vec3& wanted = expected.points[i].position;
        if (!same(real.x, wanted.x) || !same(real.y, wanted.y) || !same(real.z, wanted.z))
            report.add("point " + text(i) + ": (" + text(real.x) + ", " + text(real.y) + ", " +
                       text(real.z) + ") instead of (" + text(wanted.x) + ", " + text(wanted.y) +
                       ", " + text(wanted.z) + ")");
    }
}

void compare_polygons(const mesh::Document& document, std::size_t target, const Extent& before,
                      const LiteralScene& source, const literal::Result& expected, Report& report)
{
    const mesh::Polygons& polygons = document.layers[target].polygons;
    const std::size_t first_point = before.layers[target].points;
    for (std::size_t i = 0; i < expected.polygons.size(); ++i) {
        const std::string what = "polygon " + text(i);
        const literal::AddedPolygon& wanted = expected.polygons[i];
        const std::size_t p = before.layers[target].polygons + i;
        if (mesh::to_text(polygons.type(p)) != wanted.type)
            report.add(what + " is of type " + mesh::to_text(polygons.type(p)));
        const auto corners = polygons.points(p);
        report.expect(what + " points", corners.size(), wanted.points.size());
        for (std::size_t c = 0; c < std::min(corners.size(), wanted.points.size()); ++c)
            report.expect(what + " corner " + text(c), corners[c], first_point + wanted.points[c]);
        const LiteralScene::Place place = source.places[wanted.source];
        const mesh::Polygons& templates = document.layers[place.layer].polygons;
        report.expect(what + " surface", polygons.surface(p), templates.surface(place.polygon));
        for (const mesh::FourCC kind : templates.other_tag_kinds())
            report.expect(what + " " + mesh::to_text(kind), polygons.tag(kind, p),
                          templates.tag(kind, place.polygon));
    }
}

/// The values of the added points in one map of the target layer.
void compare_map(const mesh::VertexMap& map, std::size_t first_point,
                 const literal::Result& expected, Report& report)
{
    const literal::WrittenMap* const wanted =
        expected.find_map(mesh::to_text(map.type()), map.name());
    for (std::size_t i = 0; i < expected.points.size(); ++i) {
        const std::string what =
            mesh::to_text(map.type()) + " '" + map.name() + "' of point " + text(i);
        const auto point = static_cast<std::uint32_t>(first_point + i);
        const bool has = wanted != nullptr && wanted->values[i].has_value();
        if (map.has(point) != has) {
            report.add(what + (has ? " has no value" : " has a value"));
            continue;
        }
        if (!has)
            continue;
        const auto value = map.find(point);
        report.expect(what + " numbers", value.size(), wanted->values[i]->size());
        for (std::size_t k = 0; k < std::min(value.size(), wanted->values[i]->size()); ++k)
            if (!same(value[k], (*wanted->values[i])[k]))
                report.add(what + ": " + text(value[k]) + " instead of " +
                           text((*wanted->values[i])[k]));
    }
}

void compare_maps(const mesh::Layer& layer, std::size_t first_point, const modeler::RunResult& real,
                  const literal::Result& expected, Report& report)
{
    for (const mesh::VertexMap& map : layer.maps)
        compare_map(map, first_point, expected, report);
    for (const literal::WrittenMap& wanted : expected.maps)
        if (std::none_of(layer.maps.begin(), layer.maps.end(), [&](const mesh::VertexMap& map) {
                return mesh::to_text(map.type()) == wanted.type && map.name() == wanted.name;
            }))
            report.add("there is no map " + wanted.type + " '" + wanted.name + "'");
    std::string names;
    std::string wanted_names;
    for (const modeler::WrittenMap& map : real.maps_written)
        names += " " + mesh::to_text(map.type) + " " + map.name + "/" + text(map.dimension);
    for (const literal::WrittenMap& map : expected.maps)
        wanted_names += " " + map.type + " " + map.name + "/" + text(map.dimension);
    if (names != wanted_names)
        report.add("maps written:" + names + " instead of" + wanted_names);
}

/// Nothing but additions to the target layer, and no value lost from a map.
void compare_rest(const mesh::Document& document, std::size_t target, const Extent& before,
                  Report& report)
{
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        const Extent::Layer& old = before.layers[i];
        const mesh::Layer& layer = document.layers[i];
        if (i != target) {
            report.expect("points of layer " + text(i), layer.points.size(), old.points);
            report.expect("polygons of layer " + text(i), layer.polygons.size(), old.polygons);
            report.expect("maps of layer " + text(i), layer.maps.size(), old.map_values.size());
        }
        for (std::size_t m = 0; m < old.map_values.size(); ++m) {
            std::size_t values = 0;
            layer.maps[m].for_each([&](std::uint32_t point, std::span<const float>) {
                values += point < old.points ? 1u : 0u;
            });
            report.expect("old values of map " + layer.maps[m].name(), values, old.map_values[m]);
        }
    }
}

} // namespace

Extent::Extent(const mesh::Document& document)
{
    for (const mesh::Layer& layer : document.layers) {
        Layer& extent = layers.emplace_back();
        extent.points = layer.points.size();
        extent.polygons = layer.polygons.size();
        for (const mesh::VertexMap& map : layer.maps)
            extent.map_values.push_back(map.size());
    }
}

std::vector<std::string> differences(const mesh::Document& document,
                                     const std::vector<modeler::LayerRole>& roles,
                                     const Extent& before, const LiteralScene& source,
                                     const modeler::RunResult& real,
                                     const literal::Result& expected)
{
    Report report;
    const auto target = static_cast<std::size_t>(
        std::find(roles.begin(), roles.end(), modeler::LayerRole::foreground) - roles.begin());
    const mesh::Layer& layer = document.layers[target];
    report.expect("result code", real.code, 0);
    report.expect("points added", real.points_added, expected.points.size());
    report.expect("polygons added", real.polygons_added, expected.polygons.size());
    report.expect("points", layer.points.size(),
                  before.layers[target].points + expected.points.size());
    report.expect("polygons", layer.polygons.size(),
                  before.layers[target].polygons + expected.polygons.size());
    if (!report.lines.empty())
        return report.lines;
    compare_points(layer, before.layers[target].points, expected, report);
    compare_polygons(document, target, before, source, expected, report);
    compare_maps(layer, before.layers[target].points, real, expected, report);
    compare_rest(document, target, before, report);
    return report.lines;
}

} // namespace whole
