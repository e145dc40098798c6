// SPDX-License-Identifier: MIT
#include "modeler/module_call.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/syscall.h>
#include <unistd.h>

namespace modeler {

namespace {

/// Signals raised by a fault or by `abort`.
constexpr std::array crash_signals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGTRAP};

ModuleEndHandler end_handler = nullptr;

// Read by the signal handler; written before `calling` is set.
struct FileName {
    std::array<char, 4096> text{};
    std::size_t length = 0;

    [[nodiscard]] std::string_view view() const noexcept { return {text.data(), length}; }
};
FileName file_name;
const char* call_step = "";
pid_t caller = 0; ///< a child process of the module's is not meant
volatile std::sig_atomic_t calling = 0;

// Of the module that was unloaded last.
FileName unloaded_file;
pid_t unloader = 0;
std::atomic<std::uintptr_t> unloaded_begin = 0; ///< 0: none was
std::atomic<std::uintptr_t> unloaded_end = 0;
static_assert(std::atomic<std::uintptr_t>::is_always_lock_free, "a signal handler reads it");

std::array<struct sigaction, crash_signals.size()> actions_before{};
stack_t stack_before{};
/// After a stack overflow the handler needs an alternate stack.
alignas(16) std::array<char, 65536> handler_stack{};

std::string_view crash_text(int signal) noexcept
{
    switch (signal) {
    case SIGSEGV:
        return "the module crashed (SIGSEGV, an invalid memory access)";
    case SIGBUS:
        return "the module crashed (SIGBUS, an invalid memory access)";
    case SIGFPE:
        return "the module crashed (SIGFPE, an arithmetic error)";
    case SIGILL:
        return "the module crashed (SIGILL, an invalid instruction)";
    case SIGABRT:
        return "the module ended the program (abort)";
    case SIGSYS:
        return "the module crashed (SIGSYS, an invalid system call)";
    default:
        return "the module crashed (SIGTRAP, a trap)";
    }
}

/// Reports a thread that an unloaded module left running.
void report_access_to_unloaded(const void* address) noexcept
{
    const auto at = reinterpret_cast<std::uintptr_t>(address);
    if (end_handler == nullptr || ::getpid() != unloader || at < unloaded_begin ||
        at >= unloaded_end)
        return;
    calling = 0; // as in ModuleCall::report
    end_handler(
        {unloaded_file.view(), "unloading",
         "a thread of the module still runs (SIGSEGV); its shut-down function must end it"});
}

extern "C" void report_crash(int signal, siginfo_t* info, void* /*context*/)
{
    if (signal == SIGSEGV)
        report_access_to_unloaded(info->si_addr);
    ModuleCall::report(crash_text(signal));
    // Not in module code, or the handler has returned: use the default action.
    struct sigaction plain = {};
    plain.sa_handler = SIG_DFL;
    ::sigaction(signal, &plain, nullptr);
    ::raise(signal);
}

extern "C" void report_exit() { ModuleCall::report("the module ended the program (exit)"); }

extern "C" void report_quick_exit()
{
    ModuleCall::report("the module ended the program (quick_exit)");
}

void catch_crashes() noexcept
{
    stack_t stack = {};
    stack.ss_sp = handler_stack.data();
    stack.ss_size = handler_stack.size();
    ::sigaltstack(&stack, &stack_before);
    struct sigaction action = {};
    action.sa_sigaction = report_crash;
    action.sa_flags = SA_ONSTACK | SA_SIGINFO;
    for (std::size_t i = 0; i < crash_signals.size(); ++i) {
        struct sigaction& before = actions_before[i];
        // Another handler (of a sanitizer or debugger) takes precedence.
        if (::sigaction(crash_signals[i], nullptr, &before) == 0 && before.sa_handler == SIG_DFL)
            ::sigaction(crash_signals[i], &action, nullptr);
    }
}

void stop_catching_crashes() noexcept
{
    for (std::size_t i = 0; i < crash_signals.size(); ++i) {
        if (crash_signals[i] == SIGSEGV && unloaded_begin != 0)
            continue;
        struct sigaction now = {};
        if (::sigaction(crash_signals[i], nullptr, &now) == 0 && now.sa_sigaction == report_crash)
            ::sigaction(crash_signals[i], &actions_before[i], nullptr);
    }
    ::sigaltstack(&stack_before, nullptr);
}

} // namespace

ModuleCall::ModuleCall(const std::filesystem::path& file, const char* step) noexcept
    : outermost_(end_handler != nullptr && calling == 0)
{
    if (!outermost_)
        return;
    const std::string& name = file.native();
    file_name.length = std::min(name.size(), file_name.text.size());
    std::memcpy(file_name.text.data(), name.data(), file_name.length);
    call_step = step;
    caller = ::getpid();
    catch_crashes();
    calling = 1;
}

ModuleCall::~ModuleCall()
{
    if (!outermost_)
        return;
    calling = 0;
    stop_catching_crashes();
}

void ModuleCall::report(std::string_view problem) noexcept
{
    if (calling == 0 || end_handler == nullptr || ::getpid() != caller)
        return;
    calling = 0; // calls made by the handler itself must not be reported
    end_handler({file_name.view(), call_step, problem});
}

void ModuleCall::watch_unloaded(std::span<const std::byte> memory) noexcept
{
    if (calling == 0 || memory.empty())
        return;
    unloaded_file = file_name;
    unloader = caller;
    unloaded_end = reinterpret_cast<std::uintptr_t>(memory.data() + memory.size());
    unloaded_begin = reinterpret_cast<std::uintptr_t>(memory.data());
}

void ModuleCall::release() noexcept { calling = 0; }

void on_module_end(ModuleEndHandler handler) noexcept
{
    if (end_handler == nullptr) {
        (void)std::atexit(report_exit);
        (void)std::at_quick_exit(report_quick_exit);
    }
    end_handler = handler;
}

/// Replaces `_exit` and `_Exit` for everything loaded into the program. Unlike `exit` they do not
/// run atexit handlers, so there is no other way to intercept them.
[[noreturn]] static void end_at_once(int status) noexcept
{
    ModuleCall::report("the module ended the program (_exit)");
    for (;;)
        ::syscall(SYS_exit_group, status);
}

} // namespace modeler

// These definitions interpose those of the C library, since symbols of the executable come first.
extern "C" {

// NOLINTNEXTLINE(bugprone-reserved-identifier): the names are given
void _exit(int status) { modeler::end_at_once(status); }

// NOLINTNEXTLINE(bugprone-reserved-identifier)
void _Exit(int status) noexcept { modeler::end_at_once(status); }
}
