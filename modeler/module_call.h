// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <span>
#include <string_view>

namespace modeler {

/// RAII marker: module code is running. If the module ends the program during its lifetime (`exit`,
/// `quick_exit`, `_exit`, `abort`) or crashes it (a signal such as SIGSEGV), the handler of
/// `on_module_end` is called. Nested markers report the outermost one. Child processes that the
/// module creates are not affected.
class ModuleCall {
public:
    /// @param step  the operation, such as "startup"; a string literal
    ModuleCall(const std::filesystem::path& file, const char* step) noexcept;
    ModuleCall(const ModuleCall&) = delete;
    ModuleCall& operator=(const ModuleCall&) = delete;
    ~ModuleCall();

    /// Reports that the module ended the program in another way. Returns if no module is running.
    static void report(std::string_view problem) noexcept;

    /// Reports, until the program ends, invalid accesses to the memory of a module that is about to
    /// be unloaded: a thread of the module still runs then. Only the latest such range is watched.
    /// To be called inside a ModuleCall of that module.
    /// @param memory  the addresses at which the module is loaded
    static void watch_unloaded(std::span<const std::byte> memory) noexcept;

    /// Disables the reporting. For handlers that are about to end the program.
    static void release() noexcept;

private:
    bool outermost_;
};

/// How a module ended the program.
struct ModuleEnd {
    std::string_view file;    ///< path of the module
    std::string_view step;    ///< step of the ModuleCall, such as "run"
    std::string_view problem; ///< such as "the module ended the program (exit)"
};

/// Reports what happened and ends the program. Must be async-signal-safe and must not return.
using ModuleEndHandler = void (*)(const ModuleEnd& end) noexcept;

/// Installs the handler. To be called once, at program start. Without a handler nothing is
/// intercepted.
void on_module_end(ModuleEndHandler handler) noexcept;

} // namespace modeler
