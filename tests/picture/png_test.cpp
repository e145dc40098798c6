// SPDX-License-Identifier: MIT
#include "picture/image/png.h"

#include <atomic>
#include <cerrno>
#include <memory>
#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/support/sanitizers.h"

namespace {

/// What the next fork fails with; 0: it does not fail.
int fork_error = 0;

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): names that the linker gives
extern "C" {
pid_t __real_fork();
pid_t __wrap_fork();
}
// NOLINTEND(bugprone-reserved-identifier)

pid_t __wrap_fork()
{
    if (fork_error == 0)
        return __real_fork();
    errno = fork_error;
    return -1;
}

namespace {

using picture::Image;

Image striped_picture(int width, int height)
{
    Image image(width, height);
    unsigned char value = 0;
    for (unsigned char& byte : image.rgba)
        byte = static_cast<unsigned char>(value += 37);
    for (std::size_t i = 3; i < image.rgba.size(); i += 4)
        image.rgba[i] = 255;
    return image;
}

/// Lets forks fail as long as it lives.
struct FailingForks {
    explicit FailingForks(int error) { fork_error = error; }
    FailingForks(const FailingForks&) = delete;
    FailingForks& operator=(const FailingForks&) = delete;
    ~FailingForks() { fork_error = 0; }
};

void expect_no_child()
{
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Png, GivesBackTheSamePictureAndTheSameBytes)
{
    const Image image = striped_picture(50, 30);
    const auto bytes = picture::encode_png(image);
    EXPECT_EQ(picture::decode_png(bytes), image);
    EXPECT_EQ(picture::encode_png(image), bytes);
    expect_no_child();
}

TEST(Png, RefusesWhatIsNone)
{
    const auto bytes = picture::encode_png(Image(4, 4));
    for (std::size_t length = 0; length < bytes.size() - 12; ++length) // the last chunk is empty
        EXPECT_THROW((void)picture::decode_png(std::span(bytes).first(length)), picture::PngError);
}

TEST(Png, EncodesWhereNoProcessIsToBeHad)
{
    const Image image = striped_picture(50, 30);
    const auto bytes = picture::encode_png(image);
    const FailingForks failing(EAGAIN);
    EXPECT_EQ(picture::encode_png(image), bytes);
}

TEST(Png, HasNoMemoryWhereAProcessHasNone)
{
#ifdef ADDRESS_SANITIZER
    GTEST_SKIP() << "with AddressSanitizer pictures are encoded without a child process";
#endif
    const FailingForks failing(ENOMEM);
    EXPECT_THROW((void)picture::encode_png(striped_picture(50, 30)), std::bad_alloc);
}

TEST(Png, EncodesOnSeveralThreadsWhileOthersAllocate)
{
    const Image image = striped_picture(50, 30);
    const auto bytes = picture::encode_png(image);
    std::atomic<bool> ended = false;
    std::thread allocating([&] {
        for (std::size_t size = 1; !ended; size = size % 4096 + 1)
            (void)std::make_unique<std::vector<char>>(size);
    });
    std::vector<std::thread> encoding;
    for (int i = 0; i < 4; ++i)
        encoding.emplace_back([&] {
            for (int j = 0; j < 25; ++j)
                EXPECT_EQ(picture::encode_png(image), bytes);
        });
    for (std::thread& thread : encoding)
        thread.join();
    ended = true;
    allocating.join();
    expect_no_child();
}

} // namespace
