// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string_view>

namespace modeler {

/// While it lives, code of a module is running. A module that ends the program there (`exit`,
/// `quick_exit`, `_exit`, `abort`) or crashes it (a signal such as SIGSEGV) is reported to the
/// handler of `on_module_end`. Nested calls count as the outermost one. A child process that the
/// module makes may end as it likes.
class ModuleCall {
public:
    /// @param step  what is being done, such as "startup"; a text that stays
    ModuleCall(const std::filesystem::path& file, const char* step) noexcept;
    ModuleCall(const ModuleCall&) = delete;
    ModuleCall& operator=(const ModuleCall&) = delete;
    ~ModuleCall();

    /// Reports that the module ended the program in another way; returns where no module runs.
    static void report(std::string_view problem) noexcept;

    /// From now on the program ends as it likes. For handlers that are about to end it.
    static void release() noexcept;

private:
    bool outermost_;
};

/// What a module did instead of returning.
struct ModuleEnd {
    std::string_view file;    ///< of the module
    std::string_view step;    ///< of the ModuleCall, such as "run"
    std::string_view problem; ///< such as "the module ended the program (exit)"
};

/// Ends the program after telling what happened. May run in a signal handler, so it may call only
/// what is safe there, and must not return.
using ModuleEndHandler = void (*)(const ModuleEnd& end) noexcept;

/// Has such ends reported from now on; without a handler they stay what they are. Once, at the
/// start of a program.
void on_module_end(ModuleEndHandler handler) noexcept;

} // namespace modeler
