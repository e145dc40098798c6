// SPDX-License-Identifier: MIT
#include <array>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "cli/commands/dump.h"
#include "cli/commands/info.h"
#include "cli/commands/modules.h"
#include "cli/commands/render.h"
#include "cli/commands/scatter.h"
#include "cli/commands/settings.h"
#include "cli/console/interrupt.h"
#include "cli/console/output.h"
#include "cli/errors.h"
#include "cli/module_finder.h"
#include "cli/verbs.h"
#include "cli/version.h"
#include "settings/nearest.h"

namespace cli {

namespace {

struct VerbEntry {
    std::string_view name;
    std::string_view summary;
    std::unique_ptr<Verb> (*make)();
};

template <typename Made> std::unique_ptr<Verb> make() { return std::make_unique<Made>(); }

constexpr std::array<VerbEntry, 6> verbs{{
    {"scatter", "scatter clones of a model over a ground", make<ScatterVerb>},
    {"render", "make a picture of object files", make<RenderVerb>},
    {"settings", "list all settings with units and defaults", make<SettingsVerb>},
    {"info", "tell what is in object files", make<InfoVerb>},
    {"dump", "print a whole mesh as text", make<DumpVerb>},
    {"modules", "list the servers of the module", make<ModulesVerb>},
}};

std::string main_help()
{
    std::string text = "usage: dastrel VERB [OPTIONS] ...\n\n"
                       "Dastrel scatters clones of a model over a ground.\n\n"
                       "verbs\n";
    for (const VerbEntry& verb : verbs)
        text += fmt::format("  {:<10}{}\n", verb.name, verb.summary);
    text += "  help VERB shows all about one; so does VERB --help\n\n"
            "  --version tells the version of the program and the module it finds\n\n"
            "examples\n"
            "  dastrel scatter terrain.lwo tree.lwo -o forest.lwo --clone-num 500\n"
            "  dastrel info forest.lwo\n"
            "  dastrel render forest.lwo -o forest.png\n"
            "  dastrel help scatter\n";
    return text;
}

std::string version_text()
{
    std::string text = fmt::format("dastrel {}\n", version);
    try {
        const modeler::Module module = load_module({});
        for (const modeler::Server& server : module.servers())
            text += fmt::format("module {} ({}, {})\n", module.file().string(), server.name,
                                server.class_name);
    } catch (const Failure& failure) {
        text += fmt::format("no module: {}\n", failure.what());
    }
    return text;
}

const VerbEntry& find_verb(const std::string& name)
{
    std::vector<std::string> names{"help", "--help", "--version"};
    for (const VerbEntry& verb : verbs) {
        if (verb.name == name)
            return verb;
        names.emplace_back(verb.name);
    }
    throw UsageError(fmt::format("unknown {} '{}'{}", name.starts_with("-") ? "option" : "verb",
                                 name, settings::did_you_mean(name, names)));
}

ExitStatus run_verb(const std::string& name, std::vector<std::string> arguments)
{
    const std::unique_ptr<Verb> verb = find_verb(name).make();
    Console console(name);
    try {
        if (!verb->command_line().parse(std::move(arguments)))
            return ExitStatus::done;
        return verb->run(console);
    } catch (const UsageError& error) {
        console.error(fmt::format("{}\n{}see dastrel {} --help", error.what(),
                                  verb->command_line().usage(), name));
        return error.status();
    } catch (const Failure& failure) {
        console.error(failure.what());
        return failure.status();
    } catch (const std::bad_alloc&) {
        console.error("out of memory; make fewer clones, or use a model with fewer points");
        return ExitStatus::host;
    }
}

ExitStatus run(std::vector<std::string> arguments)
{
    if (arguments.empty()) {
        write_stdout(main_help());
        return ExitStatus::done;
    }
    const std::string first = arguments[0];
    arguments.erase(arguments.begin());
    if (first == "--help" || first == "-h" || (first == "help" && arguments.empty())) {
        write_stdout(main_help());
    } else if (first == "--version") {
        write_stdout(version_text());
    } else if (first == "help") {
        write_stdout(find_verb(arguments[0]).make()->command_line().help());
    } else {
        return run_verb(first, std::move(arguments));
    }
    return ExitStatus::done;
}

ExitStatus guarded_run(std::span<char*> arguments)
{
    Console console("");
    try {
        return run({arguments.begin(), arguments.end()});
    } catch (const UsageError& error) {
        console.error(
            fmt::format("{}\nusage: dastrel VERB [OPTIONS] ...\nsee dastrel --help", error.what()));
        return error.status();
    } catch (const Failure& failure) {
        console.error(failure.what());
        return failure.status();
    } catch (const ClosedPipe&) {
        return ExitStatus::done;
    } catch (const std::exception& error) {
        console.error(fmt::format("failed: {}", error.what()));
        return ExitStatus::host;
    }
}

} // namespace

} // namespace cli

int main(int count, char** arguments)
{
    cli::handle_signals();
    const std::span<char*> all(arguments, static_cast<std::size_t>(count));
    return static_cast<int>(cli::guarded_run(all.empty() ? all : all.subspan(1)));
}
