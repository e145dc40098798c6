// SPDX-License-Identifier: MIT
#include "cli/console/module_end.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <unistd.h>

#include "cli/console/error_object.h"
#include "cli/console/output.h"
#include "cli/errors.h"
#include "formats/file_writer.h"
#include "mesh/printable.h"
#include "modeler/module_call.h"

namespace cli {

namespace {

std::array<char, 32> verb_name{};
std::size_t verb_length = 0;

/// Files are written after the run, and before the module is shut down.
bool is_before_writing(std::string_view step) noexcept
{
    return step == "loading" || step == "startup" || step == "run";
}

[[noreturn]] void end_program(const modeler::ModuleEnd& end) noexcept
{
    formats::remove_unfinished_files();
    clear_progress_line();
    write_stderr("dastrel: ");
    if (verb_length > 0) {
        write_stderr({verb_name.data(), verb_length});
        write_stderr(": ");
    }
    mesh::write_printable(end.file, write_stderr);
    for (const std::string_view part :
         {std::string_view(": "), end.step, std::string_view(": "), end.problem})
        write_stderr(part);
    write_stderr(is_before_writing(end.step) ? "; nothing was written\n" : "\n");
    write_error_object(ExitStatus::host, {end.problem}, end.file, end.step);
    ::_exit(static_cast<int>(ExitStatus::host));
}

} // namespace

void report_module_ends(std::string_view verb) noexcept
{
    verb_length = std::min(verb.size(), verb_name.size());
    std::copy_n(verb.begin(), verb_length, verb_name.begin());
    modeler::on_module_end(end_program);
}

} // namespace cli
