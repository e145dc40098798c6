// SPDX-License-Identifier: MIT
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <unistd.h>

#include "modeler/module.h"
#include "modeler/module_call.h"
#include "tests/modeler/session.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define SANITIZER_HANDLES_SIGSEGV
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define SANITIZER_HANDLES_SIGSEGV
#endif

namespace {

#ifndef SANITIZER_HANDLES_SIGSEGV

[[noreturn]] void say_and_end(const modeler::ModuleEnd& end) noexcept
{
    for (const std::string_view part :
         {end.file, std::string_view(": "), end.step, std::string_view(": "), end.problem})
        (void)!::write(STDERR_FILENO, part.data(), part.size());
    modeler::ModuleCall::release();
    ::_exit(4);
}

[[noreturn]] void unload_while_a_thread_runs()
{
    modeler::on_module_end(say_and_end);
    (void)modeler::Module::load(session::module_file("running_thread")); // unloads it at once
    std::this_thread::sleep_for(std::chrono::seconds(30)); // until the thread was scheduled
    ::_exit(0);
}

TEST(UnloadingDeathTest, ReportsAThreadOfTheModuleThatStillRuns)
{
    EXPECT_EXIT(unload_while_a_thread_runs(), testing::ExitedWithCode(4),
                "running_thread.p: unloading: a thread of the module still runs");
}

#endif

} // namespace
