// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace mesh {

/// A background thread that prefaults pages, one range at a time.
///
/// A request is a hint; nobody waits for its completion. The requester owns the memory and calls
/// `cancel` before freeing or moving it: the addresses may be mapped to a file afterwards, which
/// prefaulting would modify. All members are thread-safe.
class PagePrefaulter {
public:
    struct Range {
        void* begin;
        std::size_t size; ///< in bytes
    };

    /// The instance of this process. The first call starts the thread, which runs until the process
    /// ends. Null with a single processor, when no thread can be started, and in a forked child.
    static PagePrefaulter* instance() noexcept;

    /// Posts a range to be prefaulted. False, and nothing is done, while an earlier range is still
    /// in the mailbox.
    bool try_post(Range range) noexcept;

    /// Drops a posted range that overlaps `memory`, and waits for one that is being prefaulted.
    /// After the call the thread does not touch `memory`.
    void cancel(Range memory) noexcept;

private:
    static PagePrefaulter* start() noexcept;
    [[noreturn]] void work() noexcept;

    std::mutex mutex_;
    std::condition_variable requested_;
    std::condition_variable finished_;
    Range next_{};    ///< the mailbox; size 0: empty
    Range current_{}; ///< being prefaulted; size 0: the thread is idle
};

} // namespace mesh
