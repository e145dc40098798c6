// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace cli {

/// What the program tells the one who called it. The numbers are part of the interface.
enum class ExitStatus {
    done = 0,
    refused = 1,      ///< the command looked at the mesh and would not run; its reason is shown
    usage = 2,        ///< the request makes no sense as it was typed
    input = 3,        ///< an input cannot be read
    host = 4,         ///< the module or the Modeler failed, memory included
    output = 5,       ///< the output cannot be written
    interrupted = 130 ///< stopped from the keyboard
};

/// Ends the program with a message and a status. Caught once, in `main`.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& message)
        : std::runtime_error(message), status_(status)
    {}

    [[nodiscard]] ExitStatus status() const noexcept { return status_; }

private:
    ExitStatus status_;
};

/// Wrong usage: `main` adds the usage line and where the help is.
class UsageError : public Failure {
public:
    explicit UsageError(const std::string& message) : Failure(ExitStatus::usage, message) {}
};

/// The reader of the program's output went away. Nobody is left to be told: it ends quietly.
class ClosedPipe : public std::exception {};

} // namespace cli
