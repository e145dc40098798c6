// SPDX-License-Identifier: MIT
#include "cli/commands/scatter.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "cli/clock.h"
#include "cli/commands/scatter_forecast.h"
#include "cli/commands/scatter_report.h"
#include "cli/console/console_front_end.h"
#include "cli/console/out_of_memory.h"
#include "cli/file_conflicts.h"
#include "cli/files.h"
#include "cli/module_finder.h"
#include "cli/pictures/picture_maker.h"
#include "formats/clone_size.h"
#include "mesh/clone_numbers.h"
#include "mesh/layer_numbers.h"
#include "modeler/clone_layers.h"
#include "modeler/ground_slopes.h"
#include "modeler/mesh_warnings.h"
#include "modeler/model_size.h"
#include "modeler/modeler.h"
#include "modeler/run_failure.h"
#include "modeler/several_models.h"
#include "settings/plausibility.h"

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

/// Excludes layers with only clones from the run, so that the clones of an earlier run are neither
/// ground nor model. They are not excluded if the role has no other layers.
void exclude_earlier_clones(const mesh::Document& document, LayerRole role,
                            std::vector<LayerRole>& roles)
{
    std::vector<LayerRole> without = roles;
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] == role && mesh::holds_only_clones(document.layers[i]))
            without[i] = LayerRole::shown;
    if (std::find(without.begin(), without.end(), role) != without.end())
        roles = std::move(without);
}

std::vector<LayerRole> scene_roles(const ScatterRequest& request, const mesh::Document& document)
{
    const std::size_t layer_count = document.layers.size();
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
        scene.roles = scene_roles(request, scene.document);
        if (request.own_layer && request.background.empty())
            exclude_earlier_clones(scene.document, LayerRole::background, scene.roles);
        return scene;
    }
    for (std::size_t i = 1; i < request.inputs.size(); ++i) {
        mesh::Document model = read_document(request.inputs[i], console);
        inputs.push_back(counted(request.inputs[i], model));
        append_model(scene.document, std::move(model), request.inputs[i], console);
    }
    scene.roles.assign(scene.document.layers.size(), LayerRole::background);
    std::fill_n(scene.roles.begin(), scene.layers_to_write, LayerRole::foreground);
    if (request.own_layer)
        exclude_earlier_clones(scene.document, LayerRole::foreground, scene.roles);
    return scene;
}

/// Rejects a ground file without layers, since clones are added to a layer of the ground.
void check_ground(const Scene& scene, const ScatterRequest& request)
{
    if (scene.layers_to_write == 0)
        throw Failure(ExitStatus::input,
                      fmt::format("{}: has no layers, so there is no ground to put clones on; name "
                                  "an object that has polygons",
                                  request.inputs[0]));
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

/// Selects the ground's polygons with these surfaces. Without surfaces nothing is selected, which
/// counts as everything.
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

/// Warns that several MODEL files form one model, and shows the commands to scatter them
/// separately.
void warn_of_several_models(const Scene& scene, ScatterReport& report, Console& console)
{
    std::vector<std::string> models;
    for (std::size_t i = 1; i < report.inputs.size(); ++i)
        models.push_back(short_name(report.inputs[i].name));
    if (models.size() < 2)
        return;
    formats::CopiedMesh clone;
    for (std::size_t i = scene.layers_to_write; i < scene.document.layers.size(); ++i)
        formats::add_clone_of(scene.document.layers[i], clone);
    report.clone_points = clone.points;
    console.warning(fmt::format(
        "{}; to have one or the other, run once for each, as in: dastrel scatter {} {} -o "
        "first.lwo --own-layer, and then: dastrel scatter first.lwo {} -o {} --own-layer",
        modeler::several_models(models, clone.points), report.inputs[0].name, report.inputs[1].name,
        report.inputs[2].name, report.output));
}

/// Warns about problems of ground and model.
void warn_of_meshes(const Scene& scene, ScatterReport& report, Console& console)
{
    const std::vector<ScatterReport::Input>& inputs = report.inputs;
    // The document has the layers of all inputs, file by file.
    const auto title = [&](std::size_t layer) {
        std::size_t file = 0;
        for (; file + 1 < inputs.size() && layer >= inputs[file].layers; ++file)
            layer -= inputs[file].layers;
        return fmt::format("layer {} of {}", layer + 1, inputs[file].name);
    };
    for (const std::string& warning : modeler::mesh_warnings(scene.document, scene.roles, title))
        console.warning(warning);
    const std::string clones = modeler::earlier_clones(scene.document, scene.roles, title);
    if (!clones.empty())
        console.warning(clones + "; --select-surface NAME keeps them on the ground's own polygons, "
                                 "and runs with --own-layer keep clones apart from the ground");
    report.size_mismatch = modeler::size_mismatch(scene.document, scene.roles);
    if (report.size_mismatch)
        console.warning(modeler::to_sentence(*report.size_mismatch));
    warn_of_several_models(scene, report, console);
}

/// A unique name for the layer of the clones, derived from the models.
std::string own_layer_name(const ScatterRequest& request, const Scene& scene)
{
    std::vector<std::string> models;
    if (request.scene) {
        for (std::size_t i = 0; i < scene.roles.size(); ++i) {
            if (scene.roles[i] != LayerRole::background)
                continue;
            const std::string& name = scene.document.layers[i].name;
            models.push_back(name.empty() ? fmt::format("layer {}", i + 1) : name);
        }
    } else {
        for (std::size_t i = 1; i < request.inputs.size(); ++i)
            models.push_back(stem(request.inputs[i]));
    }
    return modeler::free_layer_name(modeler::clone_layer_name(models), scene.document,
                                    scene.layers_to_write);
}

/// Removes the layers of the model: those between the layers to be written and those added by the
/// run.
void drop_model(mesh::Document& document, std::size_t to_write, std::size_t read)
{
    std::optional<mesh::Layer> own;
    if (document.layers.size() > read)
        own = std::move(document.layers.back());
    document.layers.truncate(to_write);
    if (!own)
        return;
    own->number = mesh::free_layer_number(document).value_or(own->number);
    document.layers.push_back(std::move(*own));
}

std::int64_t clones_made(const std::vector<settings::UsedSetting>& settings)
{
    for (const settings::UsedSetting& used : settings) {
        if (used.setting->field == "clone_num")
            return std::max<std::int64_t>(0, std::get<std::int32_t>(used.value));
    }
    return 0;
}

void warn_of_values(const ScatterRequest& request, Console& console)
{
    for (const settings::GivenSetting& given : request.settings)
        if (const std::string doubt = settings::implausible(*given.setting, given.value);
            !doubt.empty())
            console.warning(given.source + ": " + doubt);
}

bool is_on(std::string_view field, const std::vector<settings::UsedSetting>& used)
{
    return std::any_of(used.begin(), used.end(), [&](const settings::UsedSetting& one) {
        return one.setting->field == field && one.value == settings::Value(1);
    });
}

/// Adds the range of slopes to the message if the command found no polygon within its limits.
void say_slopes(const modeler::Modeler& session, Console& console)
{
    if (const auto slopes = modeler::ground_slopes(session.document(), session.roles()))
        console.error(modeler::to_sentence(*slopes) + "; --slope-min and --slope-max limit them");
}

/// Number of clones of the request.
std::int64_t clones_asked(const ScatterRequest& request)
{
    const settings::Setting& count = *settings::find_setting("clone_num");
    settings::Value value = settings::parse_value(count, count.default_text);
    for (const settings::GivenSetting& given : request.settings)
        if (given.setting == &count)
            value = given.value;
    return std::get<std::int32_t>(value);
}

/// Rejects outputs that would overwrite an input, the settings file, the module or each other.
void check_outputs(const ScatterRequest& request, const std::string& module)
{
    std::vector<RunFile> inputs;
    for (const std::string& input : request.inputs)
        inputs.push_back({"the input", input});
    if (!request.settings_file.empty())
        inputs.push_back({"the settings file", request.settings_file});
    inputs.push_back({"the module", module});
    std::vector<RunFile> outputs{{"-o", request.output}};
    if (!request.picture.empty())
        outputs.push_back({"--picture", request.picture});
    const Replacing replacing = request.force ? Replacing::allowed : Replacing::refused;
    if (request.json) {
        // First, because errors about the others are reported there.
        const RunFile summary{"--json", standard_stream};
        check_file_conflicts(inputs, {&summary, 1}, replacing);
        outputs.push_back(summary);
    }
    check_file_conflicts(inputs, outputs, replacing);
}

/// Validates the request as far as possible without reading the inputs. File conflicts are checked
/// before file extensions.
modeler::Module validate_request(const ScatterRequest& request)
{
    for (const std::string& input : request.inputs)
        validate_input(input);
    const std::string file = find_module(request.module).string();
    check_outputs(request, file);
    validate_output(request.output);
    if (!request.picture.empty())
        validate_picture_output(request.picture);
    modeler::Module module = load_module(file);
    if (module.find(modeler::mesh_edit_class, command) == nullptr)
        throw Failure(ExitStatus::host,
                      fmt::format("{}: has no command {}; `dastrel modules --module FILE` lists "
                                  "what a module has",
                                  module.file().string(), command));
    return module;
}

/// Renders the picture after the mesh was written; error messages mention the written file.
void make_result_picture(const mesh::Document& document, const std::string& picture,
                         Console& console)
{
    try {
        make_picture({&document, 1}, {}, picture, console);
    } catch (const Failure& failure) {
        throw Failure(failure.status(),
                      fmt::format("{}; the object file is written", failure.what()),
                      failure.place());
    }
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
    modeler::Module module = validate_request(request);
    report.module = module.file();
    warn_of_values(request, console);

    Stopwatch stopwatch;
    Scene scene = read_scene(request, report.inputs, console);
    check_ground(scene, request);
    select_surfaces(request.select_surfaces, scene);
    validate_result_size(scene.document, scene.roles, clones_asked(request), request.own_layer,
                         request.output);
    report.seconds.read = stopwatch.lap();

    warn_of_meshes(scene, report, console);

    const std::size_t layers_read = scene.document.layers.size();
    modeler::RunOptions options;
    if (request.own_layer)
        options.own_layer = own_layer_name(request, scene);
    modeler::Modeler session(std::move(scene.document), std::move(scene.roles));
    ConsoleFrontEnd front_end(console, request.settings);
    try {
        report.result = session.run(module, command, front_end, options);
    } catch (const modeler::ModuleError& error) {
        throw Failure(ExitStatus::host, error.what(), {error.file().string(), error.step()});
    }
    report.seconds.scatter = stopwatch.lap();
    if (!report.result.errors.empty()) {
        if (is_on("slope_limits", front_end.used_settings()))
            say_slopes(session, console);
        return ExitStatus::refused;
    }
    if (const std::string problem = modeler::run_failure(report.result); !problem.empty())
        throw Failure(ExitStatus::host,
                      fmt::format("{}: {}; nothing was written", module.file().string(), problem),
                      {module.file().string(), "run"});
    report.settings = front_end.used_settings();
    report.clones = clones_made(report.settings);
    if (report.result.points_added == 0)
        console.warning("nothing was added; there are no clones to make, or the model has no "
                        "polygons");

    mesh::Document document = session.release();
    if (document.layers.size() > layers_read)
        report.own_layer = options.own_layer;
    drop_model(document, scene.layers_to_write, layers_read);
    write_document(document, request.output, console);
    note_output_written();
    report.seconds.write = stopwatch.lap();
    if (!request.picture.empty()) {
        make_result_picture(document, request.picture, console);
        report.seconds.picture = stopwatch.lap();
    }

    if (request.json)
        write_stdout(summary_json(report, console.warnings()));
    else
        console.note(summary_line(report));
    return ExitStatus::done;
}

} // namespace cli
