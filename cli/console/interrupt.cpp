// SPDX-License-Identifier: MIT
#include "cli/console/interrupt.h"

#include <csignal>

#include <unistd.h>

#include "cli/console/output.h"
#include "formats/file_writer.h"
#include "modeler/module_call.h"

namespace cli {

namespace {

constexpr int status_of_signal = 128; // what a shell adds to a signal's number

extern "C" void end_at_once(int signal)
{
    formats::remove_unfinished_files();
    clear_progress_line();
    modeler::ModuleCall::release(); // it is not the module that ends the program
    ::_exit(status_of_signal + signal);
}

} // namespace

void handle_signals() noexcept
{
    struct sigaction ending = {};
    ending.sa_handler = end_at_once;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        // A program started in the background with a signal ignored leaves it so.
        if (::sigaction(signal, nullptr, &before) == 0 && before.sa_handler != SIG_IGN)
            ::sigaction(signal, &ending, nullptr);
    }
    struct sigaction ignored = {};
    ignored.sa_handler = SIG_IGN;
    ::sigaction(SIGPIPE, &ignored, nullptr);
    ::sigaction(SIGXFSZ, &ignored, nullptr);
}

} // namespace cli
