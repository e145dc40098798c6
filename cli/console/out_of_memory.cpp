// SPDX-License-Identifier: MIT
#include "cli/console/out_of_memory.h"

#include <atomic>
#include <exception>
#include <initializer_list>
#include <new>
#include <string_view>

#include <unistd.h>

#include "cli/console/error_object.h"
#include "cli/console/output.h"
#include "cli/errors.h"
#include "formats/file_writer.h"
#include "mesh/printable.h"
#include "modeler/module_call.h"

namespace cli {

namespace {

std::atomic<bool> allocation_failed = false;
std::atomic<bool> output_written = false;

/// Set before threads are started.
std::string_view asked_verb;
std::string_view memory_advice;

[[noreturn]] void fail_allocation()
{
    allocation_failed = true;
    throw std::bad_alloc();
}

/// The message of the uncaught exception; null: std::bad_alloc.
const char* uncaught_problem() noexcept
{
    if (std::current_exception() == nullptr)
        return allocation_failed ? nullptr : "no reason is known";
    try {
        throw; // not std::rethrow_exception, which allocates
    } catch (const std::bad_alloc&) {
        return nullptr;
    } catch (const std::exception& error) {
        return error.what();
    } catch (...) {
        return "an exception of an unknown kind";
    }
}

/// Terminate handler: for exceptions thrown before `main`, in a thread, or by a destructor of a
/// library that allocates while freeing.
[[noreturn]] void end_program() noexcept
{
    const char* const problem = uncaught_problem();
    if (problem != nullptr)
        modeler::ModuleCall::report("the module ended the program (std::terminate)");
    modeler::ModuleCall::release(); // not caused by the module
    formats::remove_unfinished_files();
    if (problem != nullptr) {
        clear_progress_line();
        write_stderr("dastrel: failed: ");
        mesh::write_printable(problem, write_stderr);
        write_stderr("\n");
        write_error_object(ExitStatus::host, {"failed: ", problem}, {}, {});
    } else {
        report_out_of_memory();
    }
    ::_exit(static_cast<int>(ExitStatus::host));
}

void install_handlers() noexcept
{
    std::set_new_handler(fail_allocation);
    std::set_terminate(end_program);
}

/// Called before the static initialisers of the program and all libraries, since most of them
/// allocate.
[[gnu::section(".preinit_array"), gnu::used]] void (*const install_first)() = &install_handlers;

} // namespace

void set_out_of_memory_advice(std::string_view verb, std::string_view advice) noexcept
{
    asked_verb = verb;
    memory_advice = advice;
}

void report_out_of_memory() noexcept
{
    constexpr std::string_view problem = "out of memory";
    const std::string_view before_advice = memory_advice.empty() ? "" : "; ";
    const std::string_view written = output_note();
    clear_progress_line();
    for (const std::string_view part :
         {std::string_view("dastrel: "), asked_verb,
          std::string_view(asked_verb.empty() ? "" : ": "), problem, before_advice, memory_advice,
          written, std::string_view("\n")})
        write_stderr(part);
    write_error_object(ExitStatus::host, {problem, before_advice, memory_advice, written}, {}, {});
}

void note_output_written() noexcept { output_written = true; }

std::string_view output_note() noexcept
{
    return output_written ? "; the object file is written" : "";
}

} // namespace cli
