// SPDX-License-Identifier: MIT
#include "cli/commands/scatter_request.h"

#include <algorithm>
#include <iterator>

#include <fmt/format.h>

#include "cli/arguments/layer_list.h"
#include "cli/errors.h"
#include "cli/files.h"
#include "settings/errors.h"

namespace cli {

namespace {

constexpr const char* intro =
    R"(Scatter clones of a model over a ground.

Every layer of GROUND is the ground, every layer of the MODEL files is what is
cloned: of several MODEL files every clone is all at once; for a mixture run
once for each, with --own-layer. With --foreground, one SCENE file holds both
in its layers. OUT gets the ground (or the scene) with the clones in it.

--seed decides the positions. The clock decides sizes, rotations and jitter, and
which places a density map thins out, so with a density map the positions depend
on it too. The summary names the clock; --clock repeats the run to the last bit.

Every polygon of the ground has the same chance of a clone, however large it
is. --distribution keeps clones apart as far as the tries of --iterations go.

An object file holds 4 GiB. A run whose clones alone would take more is refused
before its work. Past 16,777,216 points a layer goes on in further ones.
)";

constexpr const char* examples =
    R"(  dastrel scatter terrain.lwo tree.lwo -o forest.lwo --clone-num 500
  dastrel scatter terrain.lwo tree.lwo -o gentle.lwo --slope-limits \
      --slope-max 25 --h-min -180 --h-max 180
  dastrel scatter terrain.lwo stone.lwo -o stones.lwo --density-wg Density \
      --clock 1790000000
  dastrel scatter scene.lwo -o out.lwo --foreground 1 --background 2-4 \
      --settings meadow.json --seed 7

exit status: 0 done, 1 refused by the command, 2 wrong usage, 3 an input cannot
be read, 4 the module or the host failed, 5 the output cannot be written,
130 interrupted
)";

std::string described(const settings::Setting& setting)
{
    return fmt::format("{} (default {})", setting.meaning, settings::default_for_display(setting));
}

/// "line 3" in a message that reads "FILE: line 3: ..."; empty: it names no line.
std::string line_in(const std::string& message)
{
    const std::size_t line = message.find(": line ");
    if (line == std::string::npos)
        return {};
    return message.substr(line + 2, message.find(':', line + 2) - line - 2);
}

} // namespace

ScatterArguments::ScatterArguments()
    : line_({"dastrel scatter GROUND MODEL... -o OUT [settings]",
             "dastrel scatter SCENE -o OUT --foreground 1 [--background 2,3] [settings]"},
            intro, examples)
{
    line_.add_positionals(inputs_);
    line_.add_value("-o,--output", output_, "OUT", "file to write; - is standard output", "files");
    line_.add_value("--picture", picture_, "FILE.png",
                    "make a picture of the result, too; dastrel render has more options for it",
                    "files");
    line_.add_flag("--force", force_, "let the output replace an input", "files");
    line_.add_flag("--own-layer", own_layer_,
                   "put the clones into a layer of their own; layers of the ground that hold "
                   "nothing but clones of earlier runs then are no ground",
                   "files");
    line_.add_value("--foreground", foreground_, "LAYERS",
                    "layers of SCENE that are the ground, numbered from 1: 1,3 or 2-4", "files");
    line_.add_value("--background", background_, "LAYERS",
                    "layers of SCENE that are the model (default: all others)", "files");
    line_.add_repeatable(
        "--select-surface", select_surfaces_, "NAME",
        "put clones only on ground polygons with this surface; may be given again for "
        "further ones",
        "files");
    line_.add_value("--settings", settings_file_, "FILE",
                    "take settings from a JSON file; options given here win", "files");
    add_settings();
    line_.add_value("--clock", clock_, "SECONDS",
                    "fix the run's own sampler (default: the calendar clock, or DASTREL_CLOCK)",
                    "running");
    line_.add_value("--module", module_, "FILE",
                    "the module to run (default: dastrel.p beside the program or in its library "
                    "folder)",
                    "running");
    line_.add_flag("--json", json_,
                   "print a summary, or the error, as JSON on standard output; a summary "
                   "can be given to --settings",
                   "running");
    line_.add_flag("-q,--quiet", quiet_, "say errors only", "running");
}

void ScatterArguments::add_settings()
{
    for (const char* const word : {"--clones", "--count", "--number", "-n"})
        line_.add_other_word(word, "--clone-num");
    for (const settings::Setting& setting : settings::all_settings()) {
        std::string& text = settings_.emplace_back(SettingOption{&setting, {}}).text;
        const std::string name = settings::option_name(setting);
        const std::string group(setting.group);
        if (setting.unit == settings::Unit::on_off)
            line_.add_switch(name, text, described(setting), group);
        else
            line_.add_value(name, text, settings::placeholder(setting.unit), described(setting),
                            group);
    }
}

std::vector<settings::GivenSetting> ScatterArguments::given_settings() const
{
    std::vector<settings::GivenSetting> given;
    for (const SettingOption& one : settings_) {
        const std::string name = settings::option_name(*one.setting);
        if (!line_.was_given(name))
            continue;
        try {
            given.push_back({one.setting,
                             settings::parse_value(*one.setting, std::string_view(one.text)),
                             name});
        } catch (const settings::ValueError& error) {
            throw UsageError(fmt::format("{}: {}", name, error.what()));
        }
    }
    if (settings_file_.empty())
        return given;
    try {
        return settings::merge_settings(settings::read_settings_file(settings_file_),
                                        std::move(given));
    } catch (const settings::WrongSettings& error) {
        throw UsageError(error.what(), {settings_file_, line_in(error.what())});
    } catch (const settings::UnreadableSettings& error) {
        throw Failure(ExitStatus::input, error.what(), {settings_file_, {}});
    }
}

void ScatterArguments::validate_picture_name(const ScatterRequest& request) const
{
    if (request.picture.empty())
        throw UsageError("--picture: names no file");
    if (request.json && request.picture == standard_stream)
        throw UsageError("--json: the summary and the picture cannot both go to standard output");
}

void ScatterArguments::validate_inputs(ScatterRequest& request) const
{
    request.scene = !foreground_.empty();
    if (request.inputs.empty())
        throw UsageError("names no GROUND and no MODEL");
    if (request.output.empty())
        throw UsageError("names no output; add -o OUT");
    if (!request.scene && !background_.empty())
        throw UsageError("--background: needs --foreground, the layers that are the ground");
    if (request.scene && request.inputs.size() > 1)
        throw UsageError("--foreground: is for one SCENE file, and there are several");
    if (!request.scene && request.inputs.size() == 1)
        throw UsageError("names a GROUND and no MODEL; add a file to clone, or name the layers of "
                         "one scene with --foreground");
    if (std::count(request.inputs.begin(), request.inputs.end(), standard_stream) > 1)
        throw UsageError("-: standard input can be read only once");
    if (request.json && request.output == standard_stream)
        throw UsageError("--json: the summary and the output cannot both go to standard output");
    if (line_.was_given("--picture"))
        validate_picture_name(request);
    if (!request.scene)
        return;
    request.foreground = parse_layer_list("--foreground", foreground_);
    if (background_.empty())
        return;
    request.background = parse_layer_list("--background", background_);
    std::vector<std::size_t> both;
    std::set_intersection(request.foreground.begin(), request.foreground.end(),
                          request.background.begin(), request.background.end(),
                          std::back_inserter(both));
    if (!both.empty())
        throw UsageError(fmt::format("--background: layer {} is in the foreground too", both[0]));
}

ScatterRequest ScatterArguments::request() const
{
    ScatterRequest request;
    request.inputs = inputs_;
    request.output = output_;
    request.picture = picture_;
    request.select_surfaces = select_surfaces_;
    request.settings_file = settings_file_;
    request.clock = clock_;
    request.module = module_;
    request.own_layer = own_layer_;
    request.force = force_;
    request.json = json_;
    request.quiet = quiet_;
    validate_inputs(request);
    request.settings = given_settings();
    return request;
}

} // namespace cli
