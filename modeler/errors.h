// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace modeler {

/// A module cannot be loaded, violates the host interface, or failed while running.
/// `what` reads "FILE: STEP: what is wrong and what to do", ready for display.
class ModuleError : public std::runtime_error {
public:
    ModuleError(const std::filesystem::path& file, std::string_view step, std::string_view problem);

    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }
    /// The operation that failed, such as "startup" or "panel".
    [[nodiscard]] const std::string& step() const noexcept { return step_; }

private:
    std::filesystem::path file_;
    std::string step_;
};

/// A panel rejects a user action: the control is disabled, the value has the wrong type, or the
/// list has no such entry. `what` is the message for the user.
class PanelRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace modeler
