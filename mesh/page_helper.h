// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace mesh {

/// A thread that makes pages ready while others write to those before them.
///
/// A request is a hint: nobody waits for it to be done. But the memory belongs to the one who
/// asked, who withdraws it before giving it back: by then it may be somebody else's, where making
/// pages ready is no longer without effect.
class PageHelper {
public:
    struct Stretch {
        void* begin;
        std::size_t size; ///< in bytes
    };

    /// The helper of this process, started by the first call; null where there is but one processor
    /// or no thread to be had, and in a forked child. It lives as long as the process.
    static PageHelper* of_the_process() noexcept;

    /// Hands the stretch over. False: the last one is not taken up yet. From any thread.
    bool take(Stretch stretch) noexcept;

    /// Afterwards the helper touches nothing of the memory: what was asked for in it is cancelled,
    /// or awaited where it is under way. From any thread.
    void withdraw(Stretch memory) noexcept;

private:
    static PageHelper* start() noexcept;
    [[noreturn]] void work() noexcept;

    std::mutex mutex_;
    std::condition_variable requested_;
    std::condition_variable finished_;
    Stretch next_{};    ///< empty: nothing is asked for
    Stretch current_{}; ///< empty: the helper waits
};

} // namespace mesh
