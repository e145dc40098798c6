// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <sys/types.h>

namespace desktop {

/// Protects the scene while a command runs, whose module may crash, exit or hang. A forked child
/// process holds a copy-on-write snapshot of the scene. If this process ends before `release`, the
/// child writes the scene; otherwise it exits.
class SceneKeeper {
public:
    SceneKeeper() = default;
    SceneKeeper(const SceneKeeper&) = delete;
    SceneKeeper& operator=(const SceneKeeper&) = delete;
    ~SceneKeeper() { release(); }

    /// Starts the child. `write` is called only in the child, without other threads, standard
    /// streams or open files; its exceptions are ignored. All other threads must be paused. Returns
    /// false if no child can be started; the command then runs unprotected.
    [[nodiscard]] bool start(const std::function<void()>& write);

    /// Ends the child without writing the scene.
    void release() noexcept;

private:
    pid_t child_ = 0;
    int alive_ = -1; ///< write end of a pipe; the child reads the other end
};

} // namespace desktop
