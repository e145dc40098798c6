// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include <sys/types.h>

#include "desktop/preview/preview_mesh.h"

namespace desktop {

/// A trial run in a forked child process. The child has a copy of all state, including the
/// module's, so its result is the same as that of a real run. The child must not touch the window
/// or other threads' data, and ends with `finish` or `fail`.
class ForkedRun {
public:
    ForkedRun() = default;
    ForkedRun(const ForkedRun&) = delete;
    ForkedRun& operator=(const ForkedRun&) = delete;
    /// In the parent: kills the child.
    ~ForkedRun();

    /// Forks, after killing an earlier child. All other threads must be paused. Returns true in the
    /// child. @throws std::system_error in the parent if forking fails
    [[nodiscard]] bool start();

    [[nodiscard]] bool running() const noexcept { return child_ > 0; }
    /// File descriptor that becomes readable when the child has ended; -1 without a child.
    [[nodiscard]] int done_signal() const noexcept { return done_; }

    /// Kills the child.
    void stop() noexcept;

    /// Waits for the child and reads its result.
    /// @throws std::runtime_error if it ended without a complete result
    [[nodiscard]] PreviewMesh take_result();

    /// In the child: writes the elements added since `before` to the result file, and exits.
    [[noreturn]] void finish(const mesh::Document& document, std::span<const LayerCount> before,
                             std::span<const modeler::Message> errors) noexcept;
    /// In the child: writes an error message as result, and exits.
    [[noreturn]] void fail(std::string_view reason) noexcept;

private:
    void close_all() noexcept;

    pid_t child_ = 0;
    int result_ = -1; ///< memory file shared by parent and child
    int done_ = -1;   ///< see done_signal
};

} // namespace desktop
