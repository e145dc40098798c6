// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace modeler {

/// A module that cannot be loaded, does not keep its side of the interface, or failed while it ran.
/// `what` reads "FILE: STEP: what is wrong and what to do", fit to be shown as it is.
class ModuleError : public std::runtime_error {
public:
    ModuleError(const std::filesystem::path& file, std::string_view step, std::string_view problem);

    [[nodiscard]] const std::filesystem::path& file() const noexcept { return file_; }
    /// What was being done, such as "startup" or "panel".
    [[nodiscard]] const std::string& step() const noexcept { return step_; }

private:
    std::filesystem::path file_;
    std::string step_;
};

/// A user's action that a panel refuses: a disabled control, a value of the wrong kind, an entry
/// that a list does not have. `what` is the sentence for the user.
class PanelRefusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace modeler
