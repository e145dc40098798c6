// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "cli/arguments/reference.h"
#include "cli/clock.h"
#include "cli/commands/apply.h"
#include "cli/commands/dump.h"
#include "cli/commands/info.h"
#include "cli/commands/modules.h"
#include "cli/commands/render.h"
#include "cli/commands/scatter.h"
#include "cli/commands/settings.h"
#include "cli/console/error_object.h"
#include "cli/console/interrupt.h"
#include "cli/console/module_end.h"
#include "cli/console/out_of_memory.h"
#include "cli/console/output.h"
#include "cli/errors.h"
#include "cli/module_finder.h"
#include "cli/verbs.h"
#include "cli/version.h"
#include "mesh/printable.h"
#include "settings/nearest.h"

namespace cli {

namespace {

struct VerbEntry {
    std::string_view name;
    std::string_view summary;
    std::unique_ptr<Verb> (*make)();
    std::string_view memory_advice; ///< what to do where memory ends
};

template <typename Made> std::unique_ptr<Verb> make() { return std::make_unique<Made>(); }

constexpr const char* json_option = "--json";

constexpr std::array<VerbEntry, 7> verbs{{
    {"scatter", "scatter clones of a model over a ground", make<ScatterVerb>,
     "make fewer clones, or use a model with fewer points"},
    {"render", "make a picture of object files", make<RenderVerb>,
     "use smaller files, or make a smaller picture with --size"},
    {"settings", "list all settings with units and defaults", make<SettingsVerb>, ""},
    {"info", "tell what is in object files", make<InfoVerb>, "use smaller files"},
    {"dump", "print a whole mesh as text", make<DumpVerb>, "use a smaller file"},
    {"modules", "list the servers of the module", make<ModulesVerb>, ""},
    {"apply", "run a command of another module", make<ApplyVerb>, "use smaller files"},
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

/// The page of this name that is made from the options of all verbs, for those who install the
/// program; empty where it is none.
std::string reference_page(const std::string& name)
{
    std::string (*write)(std::span<const VerbHelp>) = name == "--man"    ? man_page
                                                      : name == "--bash" ? bash_completion
                                                      : name == "--zsh"  ? zsh_completion
                                                      : name == "--fish" ? fish_completion
                                                                         : nullptr;
    if (write == nullptr)
        return {};
    std::vector<std::unique_ptr<Verb>> made;
    std::vector<VerbHelp> pages;
    for (const VerbEntry& verb : verbs) {
        made.push_back(verb.make());
        pages.push_back({verb.name, verb.summary, &made.back()->command_line()});
    }
    return write(pages);
}

std::string version_text()
{
    std::string text = fmt::format("dastrel {}\n", version);
    try {
        const modeler::Module module = load_module({});
        for (const modeler::Server& server : module.servers())
            text += fmt::format("module {} ({}, {})\n", mesh::printable(module.file().string()),
                                mesh::printable(server.name), mesh::printable(server.class_name));
    } catch (const Failure& failure) {
        text += fmt::format("no module: {}\n", mesh::printable(failure.what()));
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

/// Reports the error as JSON, unless it is about standard output itself, which may be a file that
/// must not be modified.
void tell(const Failure& failure) noexcept
{
    if (failure.place().place != json_option)
        write_error_object(failure.status(), {failure.what()}, failure.place().file,
                           failure.place().place);
}

ExitStatus run_verb(const std::string& name, std::vector<std::string> arguments)
{
    const VerbEntry& entry = find_verb(name);
    set_out_of_memory_advice(entry.name, entry.memory_advice);
    const std::unique_ptr<Verb> verb = entry.make();
    Console console(name);
    report_module_ends(name);
    if (verb->command_line().has(json_option) &&
        std::find(arguments.begin(), arguments.end(), json_option) != arguments.end())
        enable_json_errors();
    try {
        if (!verb->command_line().parse(std::move(arguments)))
            return ExitStatus::done;
        const ExitStatus status = verb->run(console);
        if (status != ExitStatus::done)
            write_error_object(status, {console.errors()}, {}, {});
        return status;
    } catch (const UsageError& error) {
        console.error(error.what());
        write_stderr(fmt::format("{}see dastrel {} --help\n", verb->command_line().usage(), name));
        tell(error);
        return error.status();
    } catch (const Failure& failure) {
        console.error(failure.what());
        tell(failure);
        return failure.status();
    } catch (const std::bad_alloc&) {
        report_out_of_memory();
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
    const bool help = first == "help";
    const auto asks_for_help = [](const std::string& word) {
        return word == "help" || word == "--help" || word == "-h";
    };
    if (asks_for_help(first) && (!help || arguments.empty() || asks_for_help(arguments[0]))) {
        write_stdout(main_help());
    } else if (first == "--version") {
        fix_clock();
        write_stdout(version_text());
    } else if (const std::string page = help ? reference_page(arguments[0]) : ""; !page.empty()) {
        write_stdout(page);
    } else if (help) {
        write_stdout(find_verb(arguments[0]).make()->command_line().help());
    } else {
        return run_verb(first, std::move(arguments));
    }
    return ExitStatus::done;
}

ExitStatus guarded_run(std::span<char*> arguments)
{
    Console console("");
    report_module_ends("");
    try {
        return run({arguments.begin(), arguments.end()});
    } catch (const UsageError& error) {
        console.error(error.what());
        write_stderr("usage: dastrel VERB [OPTIONS] ...\nsee dastrel --help\n");
        tell(error);
        return error.status();
    } catch (const Failure& failure) {
        console.error(failure.what());
        tell(failure);
        return failure.status();
    } catch (const ClosedPipe&) {
        return ExitStatus::done;
    } catch (const std::bad_alloc&) {
        report_out_of_memory();
        return ExitStatus::host;
    } catch (const std::exception& error) {
        console.error(fmt::format("failed: {}", error.what()));
        write_error_object(ExitStatus::host, {"failed: ", error.what()}, {}, {});
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
