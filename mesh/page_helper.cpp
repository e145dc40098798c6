// SPDX-License-Identifier: MIT
#include "mesh/page_helper.h"

#include <csignal>
#include <exception>
#include <memory>
#include <thread>

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

} // namespace

PageHelper* PageHelper::of_the_process() noexcept
{
    static PageHelper* const helper = start();
    return helper;
}

PageHelper* PageHelper::start() noexcept
{
    if (std::thread::hardware_concurrency() < 2)
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
    Desk expected = Desk::empty;
    if (!desk_.compare_exchange_strong(expected, Desk::being_filled, std::memory_order_acquire))
        return false;
    next_ = stretch;
    desk_.store(Desk::full, std::memory_order_release);
    desk_.notify_one();
    return true;
}

void PageHelper::work() noexcept
{
    for (;;) {
        Desk seen = desk_.load(std::memory_order_acquire);
        while (seen != Desk::full) {
            desk_.wait(seen);
            seen = desk_.load(std::memory_order_acquire);
        }
        const Stretch stretch = next_;
        desk_.store(Desk::empty, std::memory_order_release);
        prepare_pages(stretch.begin, stretch.size);
    }
}

} // namespace mesh
