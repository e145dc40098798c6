// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

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

/// What an error is about, apart from the message that tells it.
struct ErrorPlace {
    std::string file;  ///< empty: none
    std::string place; ///< in the file, or the option or step; empty: none
};

/// Ends the program with a message and a status. Caught once, in `main`.
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

/// Wrong usage: `main` adds the usage line and where the help is.
class UsageError : public Failure {
public:
    /// @param message  begins with the option that it is about, if it is about one
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

/// The reader of the program's output went away. Nobody is left to be told: it ends quietly.
class ClosedPipe : public std::exception {};

} // namespace cli
