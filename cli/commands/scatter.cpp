// SPDX-License-Identifier: MIT
#include "cli/commands/scatter.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "cli/clock.h"
#include "cli/commands/scatter_forecast.h"
#include "cli/commands/scatter_report.h"
#include "cli/console/console_front_end.h"
#include "cli/files.h"
#include "cli/module_finder.h"
#include "cli/pictures/picture_maker.h"
#include "formats/errors.h"
#include "formats/merge.h"
#include "modeler/modeler.h"

namespace cli {

namespace {

constexpr const char* command = "Dastrel";

using modeler::LayerRole;

/// Seconds since the last call.
class Stopwatch {
public:
    double lap()
    {
        const auto now = std::chrono::steady_clock::now();
        return std::chrono::duration<double>(now - std::exchange(last_, now)).count();
    }

private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

/// Ground and model in one document.
struct Scene {
    mesh::Document document;
    std::vector<LayerRole> roles;
    std::size_t layers_to_write = 0; ///< the first ones; those behind them are the model's
};

ScatterReport::Input counted(const std::string& name, const mesh::Document& document)
{
    ScatterReport::Input input{name, document.layers.size(), 0, 0};
    for (const mesh::Layer& layer : document.layers) {
        input.points += layer.points.size();
        input.polygons += layer.polygons.size();
    }
    return input;
}

std::vector<LayerRole> scene_roles(const ScatterRequest& request, std::size_t layer_count)
{
    std::vector<LayerRole> roles(layer_count, request.background.empty() ? LayerRole::background
                                                                         : LayerRole::hidden);
    const auto assign = [&](const std::vector<std::size_t>& layers, LayerRole role,
                            const char* option) {
        for (const std::size_t layer : layers) {
            if (layer > layer_count)
                throw UsageError(fmt::format("{}: there is no layer {}; {} has {}", option, layer,
                                             request.inputs[0], layer_count));
            roles[layer - 1] = role;
        }
    };
    assign(request.background, LayerRole::background, "--background");
    assign(request.foreground, LayerRole::foreground, "--foreground");
    return roles;
}

Scene read_scene(const ScatterRequest& request, std::vector<ScatterReport::Input>& inputs,
                 Console& console)
{
    Scene scene;
    scene.document = read_document(request.inputs[0], console);
    inputs.push_back(counted(request.inputs[0], scene.document));
    scene.layers_to_write = scene.document.layers.size();
    if (request.scene) {
        scene.roles = scene_roles(request, scene.layers_to_write);
        return scene;
    }
    const auto warn = [&](const std::string& text) { console.warning(text); };
    for (std::size_t i = 1; i < request.inputs.size(); ++i) {
        mesh::Document model = read_document(request.inputs[i], console);
        inputs.push_back(counted(request.inputs[i], model));
        try {
            formats::append_document(scene.document, std::move(model), stem(request.inputs[i]),
                                     warn);
        } catch (const formats::LimitError& error) {
            throw Failure(ExitStatus::input,
                          fmt::format("{}: {}", request.inputs[i], error.what()));
        }
    }
    scene.roles.assign(scene.document.layers.size(), LayerRole::background);
    std::fill_n(scene.roles.begin(), scene.layers_to_write, LayerRole::foreground);
    return scene;
}

/// Calls `visit(layer, polygon)` for every polygon of the ground.
template <typename Visit> void for_each_ground_polygon(Scene& scene, Visit visit)
{
    for (std::size_t i = 0; i < scene.roles.size(); ++i) {
        if (scene.roles[i] != LayerRole::foreground)
            continue;
        mesh::Layer& layer = scene.document.layers[i];
        for (std::size_t polygon = 0; polygon < layer.polygons.size(); ++polygon)
            visit(layer, polygon);
    }
}

/// Selects the ground's polygons with these surfaces; none are named: nothing is selected, which is
/// everything.
void select_surfaces(const std::vector<std::string>& names, Scene& scene)
{
    if (names.empty())
        return;
    std::set<std::string> there;
    for_each_ground_polygon(scene, [&](mesh::Layer& layer, std::size_t polygon) {
        const mesh::TagIndex tag = layer.polygons.surface(polygon);
        if (tag == mesh::no_tag)
            return;
        const std::string& surface = scene.document.tags[tag];
        there.insert(surface);
        if (std::find(names.begin(), names.end(), surface) != names.end())
            layer.polygons.select(polygon, true);
    });
    for (const std::string& name : names) {
        if (there.count(name) != 0)
            continue;
        std::string list;
        for (const std::string& surface : there)
            list += (list.empty() ? "; there are '" : ", '") + surface + "'";
        throw UsageError(fmt::format("--select-surface: no ground polygon has the surface '{}'{}",
                                     name, list.empty() ? "; none has any" : list));
    }
}

std::int64_t clones_made(const std::vector<settings::UsedSetting>& settings)
{
    for (const settings::UsedSetting& used : settings) {
        if (used.setting->field == "clone_num")
            return std::max<std::int64_t>(0, std::get<std::int32_t>(used.value));
    }
    return 0;
}

/// How many clones the request asks for.
std::int64_t clones_asked(const ScatterRequest& request)
{
    const settings::Setting& count = *settings::find_setting("clone_num");
    settings::Value value = settings::parse_value(count, count.default_text);
    for (const settings::GivenSetting& given : request.settings)
        if (given.setting == &count)
            value = given.value;
    return std::get<std::int32_t>(value);
}

/// Judges the whole request, as far as it can be without reading the inputs.
modeler::Module judge(const ScatterRequest& request)
{
    for (const std::string& input : request.inputs)
        judge_input(input);
    judge_output(request.output);
    if (!request.picture.empty())
        judge_picture(request.picture);
    modeler::Module module = load_module(request.module);
    if (module.find(modeler::mesh_edit_class, command) == nullptr)
        throw Failure(ExitStatus::host,
                      fmt::format("{}: has no command {}; `dastrel modules --module FILE` lists "
                                  "what a module has",
                                  module.file().string(), command));
    return module;
}

} // namespace

ExitStatus ScatterVerb::run(Console& console)
{
    const ScatterRequest request = arguments_.request();
    if (request.quiet)
        console.set_quiet();
    ScatterReport report;
    report.output = request.output;
    report.picture = request.picture;
    report.clock = fix_clock(request.clock);
    modeler::Module module = judge(request);
    report.module = module.file();

    Stopwatch stopwatch;
    Scene scene = read_scene(request, report.inputs, console);
    select_surfaces(request.select_surfaces, scene);
    judge_result_size(scene.document, scene.roles, clones_asked(request), request.output);
    report.seconds.read = stopwatch.lap();

    modeler::Modeler session(std::move(scene.document), std::move(scene.roles));
    ConsoleFrontEnd front_end(console, request.settings);
    try {
        report.result = session.run(module, command, front_end);
    } catch (const modeler::ModuleError& error) {
        throw Failure(ExitStatus::host, error.what());
    }
    report.seconds.scatter = stopwatch.lap();
    if (!report.result.errors.empty())
        return ExitStatus::refused;
    if (report.result.code != 0)
        throw Failure(ExitStatus::host, fmt::format("{}: the command ended with code {}",
                                                    module.file().string(), report.result.code));
    report.settings = front_end.used_settings();
    report.clones = clones_made(report.settings);
    if (report.result.points_added == 0)
        console.warning("nothing was added; there are no clones to make, or the model has no "
                        "polygons");

    mesh::Document document = session.release();
    document.layers.erase(document.layers.begin() +
                              static_cast<std::ptrdiff_t>(scene.layers_to_write),
                          document.layers.end());
    write_document(document, request.output, console);
    report.seconds.write = stopwatch.lap();
    if (!request.picture.empty()) {
        make_picture({&document, 1}, {}, request.picture, console);
        report.seconds.picture = stopwatch.lap();
    }

    if (request.json)
        write_stdout(summary_json(report, console.warnings()));
    else
        console.note(summary_line(report));
    return ExitStatus::done;
}

} // namespace cli
