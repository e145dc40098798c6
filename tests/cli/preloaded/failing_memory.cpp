// SPDX-License-Identifier: MIT
// Lets allocations of a whole program fail, those of its libraries and of its start included. The
// library is preloaded (LD_PRELOAD). Before anything of the program has run, it becomes a server:
// for each order that it reads it forks a child, in which the program runs from its beginning to
// its end. So a run costs a fork and not the loading of all libraries.
//
//   orders   two numbers in the machine's own form: the allocation that fails (from 1; 0: none) and
//            whether all after it fail too
//   answers  two numbers: the status of the child as waitpid gives it, and how many allocations the
//            child and its own children asked for
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

// NOLINTBEGIN(bugprone-reserved-identifier): names that the C library gives
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

constexpr int orders = 198;
constexpr int answers = 199;
constexpr unsigned longest_run_s = 60;

struct Order {
    std::int64_t failing = 0;
    std::int64_t and_all_after = 0;
};

struct Answer {
    std::int64_t status = 0;
    std::int64_t allocations = 0;
};

Order order;
/// Shared with the children, so that the numbers go on in those that a child starts.
std::atomic<std::int64_t>* asked_for = nullptr;

bool fails() noexcept
{
    if (asked_for == nullptr)
        return false;
    const std::int64_t number = ++*asked_for;
    const bool failing = order.failing != 0 && (order.and_all_after != 0 ? number >= order.failing
                                                                         : number == order.failing);
    if (failing)
        errno = ENOMEM;
    return failing;
}

/// Returns in each child; the server itself ends here.
void serve() noexcept
{
    auto* const shared = static_cast<std::atomic<std::int64_t>*>(::mmap(
        nullptr, sizeof *asked_for, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    if (shared == MAP_FAILED)
        ::_exit(EXIT_FAILURE);
    while (::read(orders, &order, sizeof order) == sizeof order) {
        *shared = 0;
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(orders);
            ::close(answers);
            ::alarm(longest_run_s); // what hangs ends by a signal
            asked_for = shared;
            return;
        }
        int status = 0;
        if (child < 0 || ::waitpid(child, &status, 0) != child)
            ::_exit(EXIT_FAILURE);
        const Answer answer{status, *shared};
        if (::write(answers, &answer, sizeof answer) != sizeof answer)
            ::_exit(EXIT_FAILURE);
    }
    ::_exit(EXIT_SUCCESS);
}

/// The library is linked so that it is the first of all to be initialised.
[[gnu::constructor]] void start() { serve(); }

} // namespace

extern "C" {

void* malloc(std::size_t size) { return fails() ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size)
{
    return fails() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* memory, std::size_t size)
{
    return fails() ? nullptr : __libc_realloc(memory, size);
}

void* memalign(std::size_t alignment, std::size_t size)
{
    return fails() ? nullptr : __libc_memalign(alignment, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) { return memalign(alignment, size); }

int posix_memalign(void** memory, std::size_t alignment, std::size_t size)
{
    void* const made = memalign(alignment, size);
    if (made == nullptr)
        return ENOMEM;
    *memory = made;
    return 0;
}
}
