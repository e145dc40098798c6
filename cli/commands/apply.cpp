// SPDX-License-Identifier: MIT
#include "cli/commands/apply.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fmt/format.h>

#include "cli/clock.h"
#include "cli/console/console_front_end.h"
#include "cli/console/out_of_memory.h"
#include "cli/file_conflicts.h"
#include "cli/files.h"
#include "cli/module_finder.h"
#include "modeler/modeler.h"
#include "modeler/run_failure.h"

namespace cli {

namespace {

using modeler::LayerRole;

constexpr const char* intro =
    R"(Run a command of a module on an object file, as the Modeler does. The layers of
FILE are in the foreground, those of the BACKGROUND files in the background. OUT
gets FILE with what the command added.

A panel that the command shows is answered with OK, its values as the module set
them; a question is answered with no. For our own command, with its settings,
use dastrel scatter.
)";

constexpr const char* examples =
    R"(  dastrel apply terrain.lwo -o out.lwo --module ./smallest.p
  dastrel apply terrain.lwo tree.lwo -o out.lwo --module ./tools.p \
      --command Plant
)";

/// Answers panels with OK and the module's values.
class PlainFrontEnd : public ConsoleFrontEnd {
public:
    explicit PlainFrontEnd(Console& console) : ConsoleFrontEnd(console, {}) {}

    [[nodiscard]] bool run_panel(modeler::FormPanel& /*panel*/) override { return true; }
};

/// The module's command of this name, or its only one if no name is given.
std::string find_command(const modeler::Module& module, const std::string& named)
{
    std::string names;
    std::string only;
    int count = 0;
    for (const modeler::Server& server : module.servers()) {
        if (server.class_name != modeler::mesh_edit_class)
            continue;
        if (server.name == named)
            return named;
        names += (names.empty() ? "" : ", ") + server.name;
        only = server.name;
        ++count;
    }
    const std::string file = module.file().string();
    if (count == 0)
        throw Failure(ExitStatus::host,
                      fmt::format("{}: has no command of the class {}; `dastrel modules --module "
                                  "FILE` lists what a module has",
                                  file, modeler::mesh_edit_class),
                      {file, {}});
    if (!named.empty())
        throw UsageError(
            fmt::format("--command: {} has no command '{}'; it has {}", file, named, names));
    if (count > 1)
        throw UsageError(
            fmt::format("--command: {} has several commands, name one: {}", file, names));
    return only;
}

/// Reads the files into one document. `foreground` receives the number of layers of the first file.
mesh::Document read_files(const std::vector<std::string>& files, std::size_t& foreground,
                          Console& console)
{
    mesh::Document document = read_document(files[0], console);
    foreground = document.layers.size();
    for (std::size_t i = 1; i < files.size(); ++i)
        append_model(document, read_document(files[i], console), files[i], console);
    return document;
}

modeler::RunResult run_command(modeler::Modeler& session, modeler::Module& module,
                               const std::string& command, Console& console)
{
    PlainFrontEnd front_end(console);
    try {
        return session.run(module, command, front_end);
    } catch (const modeler::ModuleError& error) {
        throw Failure(ExitStatus::host, error.what(), {error.file().string(), error.step()});
    }
}

} // namespace

ApplyVerb::ApplyVerb()
    : line_({"dastrel apply FILE [BACKGROUND...] -o OUT --module MODULE",
             "             [--command NAME]"},
            intro, examples)
{
    line_.add_positionals(files_);
    line_.add_value("-o,--output", output_, "OUT", "file to write; - is standard output", "files");
    line_.add_value("--module", module_, "MODULE", "the module file", "choosing");
    line_.add_value("--command", command_, "NAME",
                    "the command, by its internal name, as dastrel modules lists it (default: the "
                    "module's only one)",
                    "choosing");
    line_.add_flag("--force", force_, "let the output replace an input", "files");
    line_.add_flag("-q,--quiet", quiet_, "say errors only", "running");
}

void ApplyVerb::check_arguments() const
{
    if (files_.empty())
        throw UsageError("names no file");
    if (output_.empty())
        throw UsageError("names no output; add -o OUT");
    if (module_.empty())
        throw UsageError("names no module; add --module MODULE");
    if (std::count(files_.begin(), files_.end(), standard_stream) > 1)
        throw UsageError("-: standard input can be read only once");
}

void ApplyVerb::check_output(const std::string& module_file) const
{
    std::vector<RunFile> inputs;
    for (const std::string& file : files_)
        inputs.push_back({"the input", file});
    inputs.push_back({"the module", module_file});
    const RunFile output{"-o", output_};
    check_file_conflicts(inputs, {&output, 1}, force_ ? Replacing::allowed : Replacing::refused);
    validate_output(output_);
}

ExitStatus ApplyVerb::run(Console& console)
{
    check_arguments();
    if (quiet_)
        console.set_quiet();
    fix_clock();
    for (const std::string& file : files_)
        validate_input(file);
    const std::string module_file = find_module(module_).string();
    check_output(module_file);
    modeler::Module module = load_module(module_file);
    const std::string command = find_command(module, command_);

    std::size_t foreground = 0;
    mesh::Document document = read_files(files_, foreground, console);
    std::vector<LayerRole> roles(document.layers.size(), LayerRole::background);
    std::fill_n(roles.begin(), foreground, LayerRole::foreground);
    modeler::Modeler session(std::move(document), std::move(roles));
    if (!session.enabled(*module.find(modeler::mesh_edit_class, command)))
        throw Failure(
            ExitStatus::refused,
            fmt::format("{}: {} is offered only where the foreground has polygons, and {} "
                        "has none",
                        module_file, command, files_[0]),
            {files_[0], {}});
    const modeler::RunResult result = run_command(session, module, command, console);
    if (!result.errors.empty())
        return ExitStatus::refused;
    if (const std::string problem = modeler::run_failure(result); !problem.empty())
        throw Failure(ExitStatus::host,
                      fmt::format("{}: {}; nothing was written", module_file, problem),
                      {module_file, "run"});
    if (!result.applied)
        console.warning("the command changed nothing");

    mesh::Document changed = session.release();
    changed.layers.truncate(foreground);
    write_document(changed, output_, console);
    note_output_written();
    console.note(fmt::format("{} + {} -> {} ({} and {} added)", short_name(files_[0]), command,
                             short_name(output_), grouped(result.points_added, "point"),
                             grouped(result.polygons_added, "polygon")));
    return ExitStatus::done;
}

} // namespace cli
