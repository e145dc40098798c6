// SPDX-License-Identifier: MIT
#include "mesh/pages.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mesh/buffer.h"
#include "mesh/page_helper.h"

namespace {

using mesh::Buffer;
using mesh::PageHelper;

constexpr std::size_t megabyte = std::size_t{1} << 20;

/// Fills an array so long that most of it is asked for ahead, and tells whether it holds what was
/// put into it.
bool grows(std::uint32_t first)
{
    constexpr std::uint32_t count = 4'000'000;
    Buffer<std::uint32_t> buffer;
    for (std::uint32_t i = 0; i < count; ++i)
        buffer.push_back(first + i);
    for (std::uint32_t i = 0; i < count; ++i)
        if (buffer[i] != first + i)
            return false;
    return buffer.size() == count;
}

/// Whether the helper takes the stretch within a minute.
bool taken_in_time(PageHelper& helper, PageHelper::Stretch stretch)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!helper.take(stretch)) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::yield();
    }
    return true;
}

TEST(Pages, PreparingThemChangesNothing)
{
    std::vector<std::uint32_t> values(3 * megabyte / sizeof(std::uint32_t), 7u);
    mesh::prepare_pages(values.data() + 1, values.size() * sizeof(std::uint32_t) - 9);
    mesh::prepare_pages_ahead(values.data() + 1, values.size() * sizeof(std::uint32_t) - 9);
    mesh::prepare_pages(values.data(), 0);
    EXPECT_TRUE(std::all_of(values.begin(), values.end(), [](auto value) { return value == 7u; }));
}

TEST(Pages, TheHelperComesBackForTheNextStretch)
{
    PageHelper* const helper = PageHelper::of_the_process();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    const auto memory = std::make_unique<std::byte[]>(megabyte);
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(taken_in_time(*helper, {memory.get(), megabyte})) << i;
}

TEST(Pages, TheHelperPassesOverMemoryThatIsGone)
{
    PageHelper* const helper = PageHelper::of_the_process();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    for (int i = 0; i < 50; ++i) {
        void* const memory =
            mmap(nullptr, megabyte, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        ASSERT_NE(memory, MAP_FAILED);
        ASSERT_TRUE(taken_in_time(*helper, {memory, megabyte}));
        ASSERT_EQ(munmap(memory, megabyte), 0);
    }
    EXPECT_TRUE(taken_in_time(*helper, {nullptr, megabyte}));
    EXPECT_TRUE(taken_in_time(*helper, {nullptr, 0})) << "the one before was dealt with";
}

TEST(Pages, ArraysOfSeveralThreadsGrowAtOnce)
{
    std::vector<char> grown(4, 0);
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < grown.size(); ++i)
            threads.emplace_back(
                [&grown, i] { grown[i] = grows(static_cast<std::uint32_t>(i) * 1000u) ? 1 : 0; });
    }
    EXPECT_EQ(grown, std::vector<char>(4, 1));
}

TEST(Pages, AnArrayGrowsInAForkedProcessThatHasNoHelper)
{
    ASSERT_TRUE(grows(1)) << "which starts the helper";
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0)
        _exit(grows(2) && grows(3) ? 0 : 1);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

} // namespace
