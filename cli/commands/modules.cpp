// SPDX-License-Identifier: MIT
#include "cli/commands/modules.h"

#include <fmt/format.h>

#include "cli/clock.h"
#include "cli/module_finder.h"
#include "mesh/printable.h"

namespace cli {

ModulesVerb::ModulesVerb()
    : line_({"dastrel modules [--module FILE]"},
            "List the servers of the module that scatter uses: class, name, user name, and\n"
            "the condition under which a host offers it.\n",
            "  dastrel modules\n"
            "  dastrel modules --module ./build/bin/dastrel.p\n")
{
    line_.add_value("--module", module_, "FILE",
                    "the module to look at (default: dastrel.p beside the program or in its "
                    "library folder)",
                    "choosing");
}

ExitStatus ModulesVerb::run(Console& /*console*/)
{
    fix_clock();
    const modeler::Module module = load_module(module_);
    using mesh::printable;
    std::string text = printable(module.file().string()) + "\n";
    for (const modeler::Server& server : module.servers())
        text += fmt::format(
            "  class {}  name {}  user name {}  condition {}\n", printable(server.class_name),
            printable(server.name), printable(server.user_name),
            server.enable_condition.empty() ? "none" : printable(server.enable_condition));
    write_stdout(text);
    return ExitStatus::done;
}

} // namespace cli
