// SPDX-License-Identifier: MIT
#include "mesh/page_helper.h"

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

/// Keeps signals from this thread, and from those that it starts, as long as it lives.
class SignalsHeldBack {
public:
    SignalsHeldBack() noexcept
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    SignalsHeldBack(const SignalsHeldBack&) = delete;
    SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;
    ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

/// Set in a forked child, where there is no such thread, and its lock may be taken for ever.
std::atomic<bool> forked = false;

bool overlap(const PageHelper::Stretch& a, const PageHelper::Stretch& b) noexcept
{
    const auto begin = [](const PageHelper::Stretch& stretch) {
        return reinterpret_cast<std::uintptr_t>(stretch.begin);
    };
    return begin(a) < begin(b) + b.size && begin(b) < begin(a) + a.size;
}

} // namespace

PageHelper* PageHelper::of_the_process() noexcept
{
    static PageHelper* const helper = start();
    return forked.load(std::memory_order_relaxed) ? nullptr : helper;
}

PageHelper* PageHelper::start() noexcept
{
    if (std::thread::hardware_concurrency() < 2)
        return nullptr;
    if (pthread_atfork(nullptr, nullptr, [] { forked = true; }) != 0)
        return nullptr;
    try {
        auto helper = std::make_unique<PageHelper>();
        const SignalsHeldBack held_back; // they are the program's, not this thread's
        std::thread(&PageHelper::work, helper.get()).detach();
        return helper.release(); // never deleted: the thread ends with the process
    } catch (const std::exception&) {
        return nullptr;
    }
}

bool PageHelper::take(Stretch stretch) noexcept
{
    {
        const std::lock_guard lock(mutex_);
        if (next_.size != 0)
            return false;
        next_ = stretch;
    }
    requested_.notify_one();
    return true;
}

void PageHelper::withdraw(Stretch memory) noexcept
{
    std::unique_lock lock(mutex_);
    if (overlap(next_, memory))
        next_ = {};
    finished_.wait(lock, [&] { return !overlap(current_, memory); });
}

void PageHelper::work() noexcept
{
    std::unique_lock lock(mutex_);
    for (;;) {
        requested_.wait(lock, [&] { return next_.size != 0; });
        current_ = std::exchange(next_, {});
        lock.unlock();
        prepare_pages(current_.begin, current_.size);
        lock.lock();
        current_ = {};
        finished_.notify_all();
    }
}

} // namespace mesh
