// SPDX-License-Identifier: MIT
#include "mesh/page_prefaulter.h"

#include <atomic>
#include <csignal>
#include <cstdint>
#include <exception>
#include <memory>
#include <thread>
#include <utility>

#include "mesh/pages.h"

namespace mesh {

namespace {

/// Blocks all signals for this thread, and for threads that it starts, during its lifetime.
class SignalsBlocked {
public:
    SignalsBlocked() noexcept
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

/// Set in a forked child, which has no such thread and whose copy of the mutex may be locked.
std::atomic<bool> forked = false;

bool overlap(const PagePrefaulter::Range& a, const PagePrefaulter::Range& b) noexcept
{
    const auto begin = [](const PagePrefaulter::Range& range) {
        return reinterpret_cast<std::uintptr_t>(range.begin);
    };
    return begin(a) < begin(b) + b.size && begin(b) < begin(a) + a.size;
}

} // namespace

PagePrefaulter* PagePrefaulter::instance() noexcept
{
    static PagePrefaulter* const helper = start();
    return forked.load(std::memory_order_relaxed) ? nullptr : helper;
}

PagePrefaulter* PagePrefaulter::start() noexcept
{
    if (std::thread::hardware_concurrency() < 2)
        return nullptr;
    if (pthread_atfork(nullptr, nullptr, [] { forked = true; }) != 0)
        return nullptr;
    try {
        auto helper = std::make_unique<PagePrefaulter>();
        const SignalsBlocked blocked; // other threads handle the signals of the process
        std::thread(&PagePrefaulter::work, helper.get()).detach();
        return helper.release(); // never deleted: the thread runs until the process ends
    } catch (const std::exception&) {
        return nullptr;
    }
}

bool PagePrefaulter::try_post(Range range) noexcept
{
    {
        const std::lock_guard lock(mutex_);
        if (next_.size != 0)
            return false;
        next_ = range;
    }
    requested_.notify_one();
    return true;
}

void PagePrefaulter::cancel(Range memory) noexcept
{
    std::unique_lock lock(mutex_);
    if (overlap(next_, memory))
        next_ = {};
    finished_.wait(lock, [&] { return !overlap(current_, memory); });
}

void PagePrefaulter::work() noexcept
{
    std::unique_lock lock(mutex_);
    for (;;) {
        requested_.wait(lock, [&] { return next_.size != 0; });
        current_ = std::exchange(next_, {});
        lock.unlock();
        prefault_pages(current_.begin, current_.size);
        lock.lock();
        current_ = {};
        finished_.notify_all();
    }
}

} // namespace mesh
