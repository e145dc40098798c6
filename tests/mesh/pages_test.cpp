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
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mesh/buffer.h"
#include "mesh/page_prefaulter.h"
#include "tests/support/sanitizers.h"

namespace {

using mesh::Buffer;
using mesh::PagePrefaulter;

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

/// Whether the helper takes the range within a minute.
bool posted_in_time(PagePrefaulter& helper, PagePrefaulter::Range range)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!helper.try_post(range)) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// Waits until the helper has nothing to do.
void expect_idle(PagePrefaulter& helper)
{
    const auto memory = std::make_unique<std::byte[]>(2 * megabyte);
    EXPECT_TRUE(posted_in_time(helper, {memory.get(), megabyte}));
    EXPECT_TRUE(posted_in_time(helper, {memory.get() + megabyte, megabyte}));
    helper.cancel({memory.get(), 2 * megabyte});
}

/// Private memory, at `place` unless that is null.
void* map(std::size_t size, void* place)
{
    void* const memory =
        mmap(place, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(memory, MAP_FAILED);
    return memory;
}

/// A file of nothing but a hole, mapped where the caller had memory before.
class SparseFile {
public:
    SparseFile(void* place, std::size_t size)
        : descriptor_(memfd_create("sparse", MFD_CLOEXEC)), memory_(place), size_(size)
    {
        EXPECT_EQ(ftruncate(descriptor_, static_cast<off_t>(size)), 0);
        EXPECT_EQ(mmap(place, size, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, descriptor_, 0),
                  place);
    }
    SparseFile(const SparseFile&) = delete;
    SparseFile& operator=(const SparseFile&) = delete;
    ~SparseFile()
    {
        munmap(memory_, size_);
        close(descriptor_);
    }

    /// Blocks of 512 bytes that the file takes.
    [[nodiscard]] blkcnt_t blocks() const
    {
        struct stat status = {};
        EXPECT_EQ(fstat(descriptor_, &status), 0);
        return status.st_blocks;
    }

private:
    int descriptor_;
    void* memory_;
    std::size_t size_;
};

TEST(Pages, PreparingThemChangesNothing)
{
    std::vector<std::uint32_t> values(3 * megabyte / sizeof(std::uint32_t), 7u);
    mesh::prefault_pages(values.data() + 1, values.size() * sizeof(std::uint32_t) - 9);
    mesh::prefault_pages_async(values.data() + 1, values.size() * sizeof(std::uint32_t) - 9);
    mesh::prefault_pages(values.data(), 0);
    EXPECT_TRUE(std::all_of(values.begin(), values.end(), [](auto value) { return value == 7u; }));
}

TEST(Pages, TheHelperComesBackForTheNextStretch)
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    const auto memory = std::make_unique<std::byte[]>(megabyte);
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(posted_in_time(*helper, {memory.get(), megabyte})) << i;
}

TEST(Pages, WithdrawnMemoryIsNotTouched)
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    for (int i = 0; i < 200; ++i) {
        void* const memory = map(megabyte, nullptr);
        ASSERT_TRUE(posted_in_time(*helper, {memory, megabyte}));
        helper->cancel({memory, megabyte});
        const SparseFile other(memory, megabyte);
        expect_idle(*helper);
        ASSERT_EQ(other.blocks(), 0) << i;
    }
}

TEST(Pages, WithdrawingLeavesOtherMemoryAlone)
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    void* const memory = map(2 * megabyte, nullptr);
    const SparseFile asked(memory, megabyte);
    ASSERT_TRUE(posted_in_time(*helper, {memory, megabyte}));
    helper->cancel({static_cast<std::byte*>(memory) + megabyte, megabyte});
    expect_idle(*helper);
    EXPECT_EQ(asked.blocks() * 512, static_cast<blkcnt_t>(megabyte));
    ASSERT_EQ(munmap(static_cast<std::byte*>(memory) + megabyte, megabyte), 0);
}

#ifndef ADDRESS_SANITIZER // it keeps freed memory back

/// The first byte of the page that an address lies in.
void* page_of(void* address)
{
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    return static_cast<std::byte*>(address) - reinterpret_cast<std::uintptr_t>(address) % page;
}

TEST(Pages, MemoryOfAnArrayThatIsGoneIsNotTouched)
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    constexpr std::size_t size = 64 * megabyte; // such blocks go back to the system at once
    for (int i = 0; i < 200; ++i) {
        void* memory = nullptr;
        {
            Buffer<std::byte> buffer;
            buffer.reserve(size);
            buffer.push_back({}); // asks for pages ahead
            memory = page_of(buffer.data());
        }
        const SparseFile other(memory, size);
        expect_idle(*helper);
        ASSERT_EQ(other.blocks(), 0) << i;
    }
}

TEST(Pages, MemoryThatAnArrayLeftIsNotTouched)
{
    PagePrefaulter* const helper = PagePrefaulter::instance();
    if (helper == nullptr)
        GTEST_SKIP() << "there is one processor only";
    constexpr std::size_t size = 64 * megabyte;
    for (int i = 0; i < 20; ++i) {
        Buffer<std::byte> buffer;
        buffer.reserve(size);
        buffer.push_back({});
        void* const before = page_of(buffer.data());
        // Something behind it, so that it has to move to grow.
        void* const wall = map(megabyte, static_cast<std::byte*>(before) + size + megabyte);
        buffer.reserve(4 * size);
        if (page_of(buffer.data()) != before) {
            const SparseFile other(before, size);
            expect_idle(*helper);
            ASSERT_EQ(other.blocks(), 0) << i;
        }
        ASSERT_EQ(munmap(wall, megabyte), 0);
    }
}

#endif

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
