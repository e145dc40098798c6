// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>

namespace mesh {

/// A thread that makes pages ready while others write to those before them.
///
/// It needs no word from the owner of the memory: asking the system for a page changes nothing that
/// is in it, and memory that was given back is passed over. So a request is a hint, and nobody
/// waits for it.
class PageHelper {
public:
    struct Stretch {
        void* begin;
        std::size_t size; ///< in bytes
    };

    /// The helper of this process, started by the first call; null where there is but one processor
    /// or no thread to be had. It lives as long as the process.
    static PageHelper* of_the_process() noexcept;

    /// Hands the stretch over. False: the last one is not taken up yet. From any thread. After a
    /// fork the child has no such thread: it takes one stretch that nobody prepares, and no more.
    bool take(Stretch stretch) noexcept;

private:
    enum class Desk { empty, being_filled, full };

    static PageHelper* start() noexcept;
    [[noreturn]] void work() noexcept;

    std::atomic<Desk> desk_ = Desk::empty;
    Stretch next_{}; ///< what lies on the desk while it is full
};

} // namespace mesh
