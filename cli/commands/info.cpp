// SPDX-License-Identifier: MIT
#include "cli/commands/info.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "cli/files.h"
#include "cli/json_text.h"
#include "mesh/bounds.h"
#include "mesh/document.h"
#include "mesh/plural.h"
#include "mesh/printable.h"

namespace cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr int schema = 1;

/// Names with their counts, in order of first appearance.
using Counts = std::vector<std::pair<std::string, std::size_t>>;

/// Counts the values of `key(polygon)` over all polygons of a layer, in order of first appearance.
/// The time does not depend on the number of distinct values or on other layers. Polygons without a
/// value are not counted.
template <typename Key, typename Name>
Counts count_polygons(const mesh::Layer& layer, Key key, Name name)
{
    std::unordered_map<std::uint32_t, std::size_t> places;
    Counts counts;
    for (std::size_t i = 0; i < layer.polygons.size(); ++i) {
        const std::optional<std::uint32_t> found = key(i);
        if (!found)
            continue;
        const auto [place, added] = places.try_emplace(*found, counts.size());
        if (added)
            counts.emplace_back(name(*found), 0);
        ++counts[place->second].second;
    }
    return counts;
}

/// Number of polygons by name of their type.
Counts polygon_types(const mesh::Layer& layer)
{
    return count_polygons(
        layer, [&](std::size_t i) { return std::optional(layer.polygons.type(i)); },
        [](mesh::FourCC type) { return mesh::to_text(type); });
}

Counts surfaces(const mesh::Layer& layer, const mesh::TagList& tags)
{
    return count_polygons(
        layer,
        [&](std::size_t i) {
            const mesh::TagIndex tag = layer.polygons.surface(i);
            return tag != mesh::no_tag ? std::optional(tag) : std::nullopt;
        },
        [&](mesh::TagIndex tag) { return tags[tag]; });
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
    std::string line =
        fmt::format("    {} '{}': dimension {}, {} of {} {} a value", mesh::to_text(map.type()),
                    mesh::printable(map.name()), map.dimension(), grouped(map.size()),
                    grouped(points, "point"), map.size() == 1 ? "has" : "have");
    if (map.corners().size() != 0)
        line += ", " + grouped(map.corners().size(), "single corner");
    return line + "\n";
}

/// Flushes the collected text when it is long, since the text for a file of many small parts would
/// take more memory than the file.
void write_long_text(std::string& text)
{
    constexpr std::size_t is_long = std::size_t{1} << 18;
    if (text.size() < is_long)
        return;
    write_stdout(text);
    text.clear();
}

void add_layer_text(std::string& text, const mesh::Layer& layer, const mesh::TagList& tags,
                    std::size_t place)
{
    text += fmt::format("  layer {}", place);
    if (!layer.name.empty())
        text += fmt::format(" '{}'", mesh::printable(layer.name));
    text += fmt::format(": {}, {}", grouped(layer.points.size(), "point"),
                        grouped(layer.polygons.size(), "polygon"));
    if (layer.polygons.size() != 0)
        text += " (" + list_of(polygon_types(layer)) + ")";
    text += "\n";
    if (const auto box = mesh::layer_bounds(layer))
        text += fmt::format("    bounds ({}, {}, {}) to ({}, {}, {})\n", box->min.x, box->min.y,
                            box->min.z, box->max.x, box->max.y, box->max.z);
    for (const auto& [name, number] : surfaces(layer, tags))
        text += fmt::format("    surface '{}': {}\n", mesh::printable(name),
                            grouped(number, "polygon"));
    for (const mesh::VertexMap& map : layer.maps) {
        text += map_line(map, layer.points.size());
        write_long_text(text);
    }
}

void write_file_text(const std::string& name, const mesh::Document& document)
{
    std::size_t points = 0;
    std::size_t polygons = 0;
    for (const mesh::Layer& layer : document.layers) {
        points += layer.points.size();
        polygons += layer.polygons.size();
    }
    std::string text = fmt::format("{}: {}, {}, {}\n", mesh::printable(name),
                                   mesh::counted(document.layers.size(), "layer"),
                                   grouped(points, "point"), grouped(polygons, "polygon"));
    for (std::size_t i = 0; i < document.layers.size(); ++i) {
        add_layer_text(text, document.layers[i], document.tags, i + 1);
        write_long_text(text);
    }
    write_stdout(text);
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
                        {"corner_values", map.corners().size()}});
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
        validate_input(file);
    Json files = Json::array();
    for (const std::string& file : files_) {
        const mesh::Document document = read_document(file, console);
        if (json_)
            files.push_back(file_json(file, document));
        else
            write_file_text(file, document);
    }
    if (json_)
        write_stdout(json_text({{"schema", schema}, {"files", files}}));
    return ExitStatus::done;
}

} // namespace cli
