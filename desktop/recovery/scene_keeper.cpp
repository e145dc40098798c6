// SPDX-License-Identifier: MIT
#include "desktop/recovery/scene_keeper.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desktop {

namespace {

/// Detaches the child from the parent's session and closes its inherited descriptors, since the
/// display server would keep showing the window. Returns the new descriptor of the pipe.
int detach(int pipe) noexcept
{
    constexpr int kept_pipe = 3;
    // A different process name, so that killing all processes of the window's name spares this one.
    ::prctl(PR_SET_NAME, "dastrel-keeper");
    ::setsid();
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM})
        (void)std::signal(signal, SIG_IGN);
    ::dup2(pipe, kept_pipe);
    ::close_range(kept_pipe + 1, ~0U, 0);
    const int nowhere = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(nowhere, stream);
    ::close(nowhere);
    return kept_pipe;
}

[[noreturn]] void keep(int pipe, const std::function<void()>& write) noexcept
{
    pipe = detach(pipe);
    char byte = 0;
    ssize_t got = 0;
    do {
        got = ::read(pipe, &byte, 1);
    } while (got < 0 && errno == EINTR);
    if (got == 0) { // the parent has ended without releasing the child
        try {
            write();
        } catch (...) {
            ::_exit(1);
        }
    }
    ::_exit(0);
}

} // namespace

bool SceneKeeper::start(const std::function<void()>& write)
{
    release();
    std::array<int, 2> pipe{-1, -1};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0)
        return false;
    child_ = ::fork();
    if (child_ == 0) {
        ::close(pipe[1]);
        keep(pipe[0], write);
    }
    ::close(pipe[0]);
    if (child_ > 0) {
        alive_ = pipe[1];
        return true;
    }
    child_ = 0;
    ::close(pipe[1]);
    return false;
}

void SceneKeeper::release() noexcept
{
    if (child_ <= 0)
        return;
    const char byte = 0;
    while (::write(alive_, &byte, 1) < 0 && errno == EINTR) {
    }
    ::close(alive_);
    while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
    alive_ = -1;
    child_ = 0;
}

} // namespace desktop
