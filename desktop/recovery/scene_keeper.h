// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <sys/types.h>

namespace desktop {

/// Keeps the scene safe while a command runs, whose module may crash, end the program, or loop
/// until the program is ended: a child of this process holds a copy of everything as it is at the
/// start, pages of memory being shared until one side changes them. When this process is gone
/// before it has released the child, the child writes the scene; otherwise it just ends.
class SceneKeeper {
public:
    SceneKeeper() = default;
    SceneKeeper(const SceneKeeper&) = delete;
    SceneKeeper& operator=(const SceneKeeper&) = delete;
    ~SceneKeeper() { release(); }

    /// Begins. `write` is called in the child alone, and there with no other thread, no standard
    /// streams and no open files; what it throws is dropped. No other thread may be at work now.
    /// Returns false when the system refuses a child: the command then runs without.
    [[nodiscard]] bool start(const std::function<void()>& write);

    /// The scene needs no keeping any more: ends the child.
    void release() noexcept;

private:
    pid_t child_ = 0;
    int alive_ = -1; ///< end of a pipe whose other end the child reads
};

} // namespace desktop
