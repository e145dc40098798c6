// SPDX-License-Identifier: MIT
#include "cli/commands/dump.h"

#include "cli/commands/mesh_text.h"
#include "cli/files.h"

namespace cli {

DumpVerb::DumpVerb()
    : line_({"dastrel dump FILE"},
            "Print a whole mesh as text, one point, polygon or value on a line: the same mesh\n"
            "always gives the same text, so that two can be compared. - is standard input.\n",
            "  dastrel dump tree.lwo\n"
            "  diff <(dastrel dump before.lwo) <(dastrel dump after.lwo)\n")
{
    line_.add_positionals(files_);
}

ExitStatus DumpVerb::run(Console& console)
{
    if (files_.size() != 1)
        throw UsageError(files_.empty() ? "names no file" : "prints one file at a time");
    validate_input(files_[0]);
    write_mesh_text(read_document(files_[0], console), write_stdout);
    return ExitStatus::done;
}

} // namespace cli
