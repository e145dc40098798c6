// SPDX-License-Identifier: MIT
#include "picture/image/png.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <exception>
#include <new>
#include <string>

#include <fcntl.h>
#include <lodepng.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

// AddressSanitizer's allocator may be locked by another thread when a process forks; the child then
// waits for ever. Builds with it encode in their own process.
#if defined(__SANITIZE_ADDRESS__)
#define ENCODE_IN_OWN_PROCESS 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ENCODE_IN_OWN_PROCESS 1
#endif
#endif

namespace picture {

namespace {

#ifdef ENCODE_IN_OWN_PROCESS
constexpr bool may_fork = false;
#else
constexpr bool may_fork = true;
#endif

constexpr unsigned out_of_memory = 83; ///< the library's number for it

void check(unsigned error)
{
    if (error == out_of_memory)
        throw std::bad_alloc();
    if (error != 0)
        throw PngError(std::string("no PNG picture: ") + lodepng_error_text(error));
}

bool is_covered(const Image& image)
{
    for (std::size_t i = 3; i < image.rgba.size(); i += 4)
        if (image.rgba[i] != 255)
            return false;
    return true;
}

std::vector<unsigned char> encode(const Image& image)
{
    lodepng::State state; // as it stands, it takes RGBA
    state.encoder.auto_convert = 0;
    state.info_png.color.colortype = is_covered(image) ? LCT_RGB : LCT_RGBA;
    std::vector<unsigned char> encoded;
    check(lodepng::encode(encoded, image.rgba, static_cast<unsigned>(image.width),
                          static_cast<unsigned>(image.height), state));
    return encoded;
}

/// Marker byte sequence after a complete file.
constexpr unsigned char end_mark = 1;

/// Writes all bytes to a pipe. Returns false on failure.
void write_all(int pipe, std::span<const unsigned char> bytes) noexcept
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(pipe, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return;
        bytes = bytes.subspan(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
}

/// Encodes and then decodes the result to verify it: the checksum of the pixels in the file detects
/// missing parts. @throws std::bad_alloc, PngError
std::vector<unsigned char> encode_and_try(const Image& image)
{
    std::vector<unsigned char> encoded = encode(image);
    (void)decode_png(std::as_bytes(std::span(encoded)));
    return encoded;
}

/// Encodes in this process. @throws std::bad_alloc, PngError
std::vector<std::byte> encode_here(const Image& image)
{
    const std::vector<unsigned char> encoded = encode_and_try(image);
    const auto bytes = std::as_bytes(std::span(encoded));
    return {bytes.begin(), bytes.end()};
}

/// Encodes and writes the file to a pipe, with the end marker on success.
void encode_to(int pipe, const Image& image) noexcept
{
    try {
        std::vector<unsigned char> encoded = encode_and_try(image);
        encoded.push_back(end_mark);
        write_all(pipe, encoded);
    } catch (const std::exception&) {
        return; // the missing mark tells
    }
}

/// Reads a pipe until its write end is closed. @throws std::bad_alloc
std::vector<std::byte> read_all(int pipe)
{
    std::vector<std::byte> bytes;
    std::array<std::byte, 65536> block{};
    for (;;) {
        const ssize_t count = ::read(pipe, block.data(), block.size());
        if (count == 0 || (count < 0 && errno != EINTR))
            return bytes;
        if (count > 0)
            bytes.insert(bytes.end(), block.begin(), block.begin() + count);
    }
}

/// A child process that encodes, and the pipe it writes to. Forking may fail.
class Encoder {
public:
    /// @throws std::bad_alloc if there is no memory for a process
    explicit Encoder(const Image& image)
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw PngError(std::string("no PNG picture: ") + std::strerror(errno));
        pipe_ = ends[0];
        const pid_t parent = ::getpid();
        child_ = ::fork();
        if (child_ == 0)
            work(ends[1], parent, image);
        const int error = errno;
        ::close(ends[1]);
        if (child_ < 0) {
            ::close(pipe_);
            if (error == ENOMEM)
                throw std::bad_alloc();
        }
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    ~Encoder()
    {
        if (child_ < 0)
            return;
        ::close(pipe_); // which ends a child that has not written all
        while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR)
            continue;
    }

    [[nodiscard]] bool started() const noexcept { return child_ > 0; }
    [[nodiscard]] int pipe() const noexcept { return pipe_; }

private:
    /// Runs in the child; does not return.
    [[noreturn]] static void work(int pipe, pid_t parent, const Image& image) noexcept
    {
        const rlimit no_core{0, 0};
        (void)::setrlimit(RLIMIT_CORE, &no_core);
        // End with the parent: encoding a large picture takes seconds.
        (void)::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() == parent)
            encode_to(pipe, image);
        ::_exit(0);
    }

    int pipe_ = -1;
    pid_t child_ = -1;
};

} // namespace

std::vector<std::byte> encode_png(const Image& image)
{
    // The library does not handle failed allocations: it leaves out bytes without an error, or
    // crashes. So it runs in a child process, and its output is decoded again.
    if (!may_fork)
        return encode_here(image);
    const Encoder encoder(image);
    if (!encoder.started()) // the limit of processes is reached, which says nothing about memory
        return encode_here(image);
    std::vector<std::byte> bytes = read_all(encoder.pipe());
    if (bytes.empty() || bytes.back() != std::byte{end_mark})
        throw std::bad_alloc();
    bytes.pop_back();
    return bytes;
}

Image decode_png(std::span<const std::byte> bytes)
{
    unsigned width = 0;
    unsigned height = 0;
    Image image;
    check(lodepng::decode(image.rgba, width, height,
                          reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    return image;
}

} // namespace picture
