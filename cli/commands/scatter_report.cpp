// SPDX-License-Identifier: MIT
#include "cli/commands/scatter_report.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "cli/console/output.h"
#include "cli/files.h"
#include "cli/json_text.h"
#include "cli/version.h"
#include "mesh/fourcc.h"
#include "mesh/plural.h"

namespace cli {

namespace {

using Json = nlohmann::ordered_json;

constexpr int schema = 1;

double total(const ScatterReport::Seconds& seconds)
{
    return seconds.read + seconds.scatter + seconds.write + seconds.picture;
}

Json inputs_json(const ScatterReport& report)
{
    Json inputs = Json::array();
    for (const ScatterReport::Input& input : report.inputs)
        inputs.push_back({{"file", input.name},
                          {"layers", input.layers},
                          {"points", input.points},
                          {"polygons", input.polygons}});
    return inputs;
}

Json maps_json(const ScatterReport& report)
{
    Json maps = Json::array();
    for (const modeler::WrittenMap& map : report.result.maps_written)
        maps.push_back({{"type", mesh::to_text(map.type)},
                        {"name", map.name},
                        {"dimension", map.dimension},
                        {"created", map.created}});
    return maps;
}

Json settings_json(const ScatterReport& report)
{
    Json settings = Json::object();
    for (const settings::UsedSetting& used : report.settings)
        settings[std::string(used.setting->field)] = settings::to_json(*used.setting, used.value);
    return settings;
}

} // namespace

std::string summary_line(const ScatterReport& report)
{
    std::string inputs;
    for (const ScatterReport::Input& input : report.inputs) {
        if (inputs.empty())
            inputs =
                fmt::format("{} ({})", short_name(input.name), grouped(input.polygons, "polygon"));
        else
            inputs += " + " + short_name(input.name);
    }
    const std::string picture = report.picture.empty() ? "" : " and " + short_name(report.picture);
    const std::string clone =
        report.clone_points == 0
            ? ""
            : fmt::format(", one clone = {}, {}", mesh::counted(report.inputs.size() - 1, "file"),
                          grouped(report.clone_points, "point"));
    return fmt::format(
        "{} -> {}{} ({}{}, {}, {}, clock {}, {:.2f} s)", inputs, short_name(report.output), picture,
        grouped(static_cast<std::uint64_t>(report.clones), "clone"), clone,
        grouped(report.result.points_added, "point"),
        grouped(report.result.polygons_added, "polygon"), report.clock, total(report.seconds));
}

std::string summary_json(const ScatterReport& report, std::span<const std::string> warnings)
{
    Json summary = {
        {"schema", schema},
        {"program", std::string("dastrel ") + version},
        {"module", report.module.string()},
        {"inputs", inputs_json(report)},
        {"output", report.output},
        {"clock", report.clock},
        {"settings", settings_json(report)},
        {"clones", report.clones},
        {"points_added", report.result.points_added},
        {"polygons_added", report.result.polygons_added},
        {"maps_written", maps_json(report)},
        {"warnings", std::vector<std::string>(warnings.begin(), warnings.end())},
        {"seconds",
         {{"read", report.seconds.read},
          {"scatter", report.seconds.scatter},
          {"write", report.seconds.write},
          {"total", total(report.seconds)}}},
    };
    if (report.clone_points > 0)
        summary["clone"] = {{"files", report.inputs.size() - 1}, {"points", report.clone_points}};
    if (report.size_mismatch)
        summary["model_size"] = {{"model", report.size_mismatch->model},
                                 {"ground", report.size_mismatch->ground},
                                 {"fitting_factor", report.size_mismatch->factor}};
    if (!report.own_layer.empty())
        summary["own_layer"] = report.own_layer;
    if (!report.picture.empty()) {
        summary["picture"] = report.picture;
        summary["seconds"]["picture"] = report.seconds.picture;
    }
    return json_text(summary);
}

} // namespace cli
