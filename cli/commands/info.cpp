// SPDX-License-Identifier: MIT
#include "cli/commands/info.h"

#include <cstddef>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "cli/files.h"
#include "mesh/bounds.h"
#include "mesh/document.h"

namespace cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr int schema = 1;

/// Names in order of first appearance, each with how often it came.
using Counts = std::vector<std::pair<std::string, std::size_t>>;

void count(Counts& counts, const std::string& name)
{
    for (auto& [known, number] : counts) {
        if (known == name) {
            ++number;
            return;
        }
    }
    counts.emplace_back(name, 1);
}

Counts polygon_types(const mesh::Layer& layer)
{
    Counts types;
    for (std::size_t i = 0; i < layer.polygons.size(); ++i)
        count(types, mesh::to_text(layer.polygons.type(i)));
    return types;
}

/// Polygons of each surface; a file may have many thousands of surfaces, so they are counted by
/// tag.
Counts surfaces(const mesh::Layer& layer, const mesh::TagList& tags)
{
    std::vector<std::size_t> polygons(tags.size());
    std::vector<mesh::TagIndex> order;
    for (std::size_t i = 0; i < layer.polygons.size(); ++i) {
        const mesh::TagIndex tag = layer.polygons.surface(i);
        if (tag != mesh::no_tag && polygons[tag]++ == 0)
            order.push_back(tag);
    }
    Counts counts;
    for (const mesh::TagIndex tag : order)
        counts.emplace_back(tags[tag], polygons[tag]);
    return counts;
}

std::string list_of(const Counts& counts)
{
    std::string list;
    for (const auto& [name, number] : counts)
        list += fmt::format("{}{} {}", list.empty() ? "" : ", ", grouped(number), name);
    return list;
}

std::string map_line(const mesh::VertexMap& map, std::size_t points)
{
    std::string line = fmt::format("    {} '{}': dimension {}, {} of {} points have a value",
                                   mesh::to_text(map.type()), map.name(), map.dimension(),
                                   grouped(map.size()), grouped(points));
    if (map.corners.size() != 0)
        line += fmt::format(", {} single corners", grouped(map.corners.size()));
    return line + "\n";
}

std::string layer_text(const mesh::Layer& layer, const mesh::TagList& tags, std::size_t place)
{
    std::string text = fmt::format("  layer {}", place);
    if (!layer.name.empty())
        text += fmt::format(" '{}'", layer.name);
    text += fmt::format(": {} points, {} polygons", grouped(layer.points.size()),
                        grouped(layer.polygons.size()));
    if (layer.polygons.size() != 0)
        text += " (" + list_of(polygon_types(layer)) + ")";
    text += "\n";
    if (const auto box = mesh::layer_bounds(layer))
        text += fmt::format("    bounds ({}, {}, {}) to ({}, {}, {})\n", box->min.x, box->min.y,
                            box->min.z, box->max.x, box->max.y, box->max.z);
    for (const auto& [name, number] : surfaces(layer, tags))
        text += fmt::format("    surface '{}': {} polygons\n", name, grouped(number));
    for (const mesh::VertexMap& map : layer.maps)
        text += map_line(map, layer.points.size());
    return text;
}

std::string file_text(const std::string& name, const mesh::Document& document)
{
    std::size_t points = 0;
    std::size_t polygons = 0;
    std::string layers;
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        points += document.layers[i].points.size();
        polygons += document.layers[i].polygons.size();
        layers += layer_text(document.layers[i], document.tags, i + 1);
    }
    return fmt::format("{}: {} {}, {} points, {} polygons\n", name, document.layers.size(),
                       document.layers.size() == 1 ? "layer" : "layers", grouped(points),
                       grouped(polygons)) +
           layers;
}

Json counts_json(const Counts& counts, const char* key)
{
    Json list = Json::array();
    for (const auto& [name, number] : counts)
        list.push_back({{key, name}, {"polygons", number}});
    return list;
}

Json layer_json(const mesh::Layer& layer, const mesh::TagList& tags, std::size_t place)
{
    Json maps = Json::array();
    for (const mesh::VertexMap& map : layer.maps)
        maps.push_back({{"type", mesh::to_text(map.type())},
                        {"name", map.name()},
                        {"dimension", map.dimension()},
                        {"points_with_value", map.size()},
                        {"corner_values", map.corners.size()}});
    Json bounds; // null without points
    if (const auto box = mesh::layer_bounds(layer))
        bounds = {{"min", {box->min.x, box->min.y, box->min.z}},
                  {"max", {box->max.x, box->max.y, box->max.z}}};
    return {{"layer", place},
            {"name", layer.name},
            {"points", layer.points.size()},
            {"polygons", layer.polygons.size()},
            {"polygon_types", counts_json(polygon_types(layer), "type")},
            {"surfaces", counts_json(surfaces(layer, tags), "name")},
            {"maps", maps},
            {"bounds", bounds}};
}

Json file_json(const std::string& name, const mesh::Document& document)
{
    Json layers = Json::array();
    for (std::size_t i = 0; i < document.layers.size(); ++i)
        layers.push_back(layer_json(document.layers[i], document.tags, i + 1));
    return {{"file", name}, {"layers", layers}};
}

} // namespace

InfoVerb::InfoVerb()
    : line_({"dastrel info FILE... [--json]"},
            "Tell what is in object files: layers, points, polygons by type, bounds,\n"
            "surfaces and vertex maps. - is standard input.\n",
            "  dastrel info terrain.lwo tree.lwo\n"
            "  dastrel info forest.lwo --json\n"
            "  dastrel scatter terrain.lwo tree.lwo -o - | dastrel info -\n")
{
    line_.add_positionals(files_);
    line_.add_flag("--json", json_, "print it as JSON", "printing");
}

ExitStatus InfoVerb::run(Console& console)
{
    if (files_.empty())
        throw UsageError("names no file");
    for (const std::string& file : files_)
        judge_input(file);
    Json files = Json::array();
    for (const std::string& file : files_) {
        const mesh::Document document = read_document(file, console);
        if (json_)
            files.push_back(file_json(file, document));
        else
            write_stdout(file_text(file, document));
    }
    if (json_)
        write_stdout(Json({{"schema", schema}, {"files", files}})
                         .dump(2, ' ', false, Json::error_handler_t::replace) +
                     "\n");
    return ExitStatus::done;
}

} // namespace cli
