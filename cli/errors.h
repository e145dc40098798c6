// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace cli {

/// Exit codes of the program. The numbers are part of the interface.
enum class ExitStatus {
    done = 0,
    refused = 1,      ///< the module's command rejected the mesh; its message is shown
    usage = 2,        ///< invalid command line
    input = 3,        ///< an input cannot be read
    host = 4,         ///< the module or the host failed, including out of memory
    output = 5,       ///< the output cannot be written
    interrupted = 130 ///< interrupted from the keyboard
};

/// The subject of an error, for machine-readable error reports.
struct ErrorPlace {
    std::string file;  ///< empty: none
    std::string place; ///< position in the file, or option or step; empty: none
};

/// Ends the program with a message and an exit status. Caught in `main`.
class Failure : public std::runtime_error {
public:
    Failure(ExitStatus status, const std::string& message, ErrorPlace place = {})
        : std::runtime_error(message), status_(status), place_(std::move(place))
    {}

    [[nodiscard]] ExitStatus status() const noexcept { return status_; }
    [[nodiscard]] const ErrorPlace& place() const noexcept { return place_; }

private:
    ExitStatus status_;
    ErrorPlace place_;
};

/// Invalid command line: `main` appends the usage line and a pointer to the help.
class UsageError : public Failure {
public:
    /// @param message  begins with the option concerned, if any
    explicit UsageError(const std::string& message) : UsageError(message, {{}, option_in(message)})
    {}
    UsageError(const std::string& message, ErrorPlace place)
        : Failure(ExitStatus::usage, message, std::move(place))
    {}

private:
    [[nodiscard]] static std::string option_in(const std::string& message)
    {
        const std::string option = message.substr(0, message.find_first_of(": "));
        return option.size() > 1 && option[0] == '-' ? option : std::string();
    }
};

/// The reader closed the pipe at standard output. The program ends without a message.
class ClosedPipe : public std::exception {};

} // namespace cli
