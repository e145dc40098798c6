// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string_view>

#include <sys/types.h>

#include "desktop/preview/preview_mesh.h"

namespace desktop {

/// A run that is tried out in a child of this process. The child is a copy of everything, of the
/// module's own state too: what the run gives there is what it will give here. It must touch
/// nothing that belongs to the window or to other threads, and ends with `finish` or `fail`.
class ForkedRun {
public:
    ForkedRun() = default;
    ForkedRun(const ForkedRun&) = delete;
    ForkedRun& operator=(const ForkedRun&) = delete;
    /// Ends the child, in the parent.
    ~ForkedRun();

    /// Parts this process in two, after ending an earlier child. No other thread may be at work.
    /// Returns true in the child. @throws std::system_error in the parent when the system refuses.
    [[nodiscard]] bool start();

    [[nodiscard]] bool running() const noexcept { return child_ > 0; }
    /// Becomes readable when the child has ended; -1 when there is none.
    [[nodiscard]] int done_signal() const noexcept { return done_; }

    /// Ends the child wherever it is.
    void stop() noexcept;

    /// Waits for the child, and takes what it made.
    /// @throws std::runtime_error when it ended before its time
    [[nodiscard]] PreviewMesh take_result();

    /// In the child: hands over what the document gained, and ends.
    [[noreturn]] void finish(const mesh::Document& document, std::span<const LayerCount> before,
                             std::span<const modeler::Message> errors) noexcept;
    /// In the child: tells why there is nothing, and ends.
    [[noreturn]] void fail(std::string_view reason) noexcept;

private:
    void close_all() noexcept;

    pid_t child_ = 0;
    int result_ = -1; ///< file in memory that both sides share
    int done_ = -1;
};

} // namespace desktop
