// SPDX-License-Identifier: MIT
#include "cli/console/interrupt.h"

#include <csignal>
#include <string_view>

#include <unistd.h>

#include "cli/console/error_object.h"
#include "cli/console/out_of_memory.h"
#include "cli/console/output.h"
#include "cli/errors.h"
#include "formats/file_writer.h"
#include "modeler/module_call.h"

namespace cli {

namespace {

constexpr int status_of_signal = 128; // what a shell adds to a signal's number

std::string_view message_for(int signal) noexcept
{
    switch (signal) {
    case SIGTERM:
        return "ended by the signal SIGTERM";
    case SIGHUP:
        return "ended by the signal SIGHUP";
    default:
        return "interrupted";
    }
}

extern "C" void end_at_once(int signal)
{
    formats::remove_unfinished_files();
    clear_progress_line();
    modeler::ModuleCall::release(); // the program ends, not the module
    const int status = status_of_signal + signal;
    write_error_object(static_cast<ExitStatus>(status), {message_for(signal), output_note()}, {},
                       {});
    ::_exit(status);
}

} // namespace

void handle_signals() noexcept
{
    struct sigaction ending = {};
    ending.sa_handler = end_at_once;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        // Keep a signal ignored if it was ignored at start, as in background jobs.
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(signal, &ending, nullptr);
    }
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &ignored, nullptr);
    ::sigaction(SIGXFSZ, &ignored, nullptr);
}

} // namespace cli
