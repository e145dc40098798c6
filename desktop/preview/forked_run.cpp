// SPDX-License-Identifier: MIT
#include "desktop/preview/forked_run.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace desktop {

namespace {

[[noreturn]] void refuse(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

int wait_for(pid_t child) noexcept
{
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

/// A read-only memory mapping of a file.
class Mapping {
public:
    explicit Mapping(int file)
    {
        struct stat about {};
        if (::fstat(file, &about) != 0)
            refuse("preview");
        size_ = static_cast<std::size_t>(about.st_size);
        if (size_ == 0)
            throw std::runtime_error("the run ended without a result");
        data_ = ::mmap(nullptr, size_, PROT_READ, MAP_SHARED, file, 0);
        if (data_ == MAP_FAILED)
            refuse("preview");
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    ~Mapping() { ::munmap(data_, size_); }

    [[nodiscard]] std::span<const std::byte> bytes() const noexcept
    {
        return {static_cast<const std::byte*>(data_), size_};
    }

private:
    void* data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace

ForkedRun::~ForkedRun() { stop(); }

bool ForkedRun::start()
{
    stop();
    std::array<int, 2> signal{-1, -1};
    if (::pipe2(signal.data(), O_CLOEXEC) != 0)
        refuse("preview");
    done_ = signal[0];
    result_ = ::memfd_create("preview", MFD_CLOEXEC);
    child_ = result_ < 0 ? -1 : ::fork();
    if (child_ == 0) {
        // The write end of the pipe closes when the child ends in any way. The child is killed with
        // its parent.
        ::close(signal[0]);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        return true;
    }
    const int error = errno;
    ::close(signal[1]);
    if (child_ > 0)
        return false;
    child_ = 0;
    close_all();
    errno = error;
    refuse("preview");
}

void ForkedRun::stop() noexcept
{
    if (child_ > 0) {
        ::kill(child_, SIGKILL);
        wait_for(child_);
        child_ = 0;
    }
    close_all();
}

void ForkedRun::close_all() noexcept
{
    for (int* const file : {&result_, &done_}) {
        if (*file >= 0)
            ::close(*file);
        *file = -1;
    }
}

PreviewMesh ForkedRun::take_result()
{
    const int status = wait_for(child_);
    child_ = 0;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        close_all();
        throw std::runtime_error("the run broke off; there may be too little memory");
    }
    PreviewMesh mesh = read_preview(Mapping(result_).bytes());
    close_all();
    return mesh;
}

void ForkedRun::finish(const mesh::Document& document, std::span<const LayerCount> before,
                       std::span<const modeler::Message> errors) noexcept
{
    try {
        write_preview(result_, document, before, errors);
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

void ForkedRun::fail(std::string_view reason) noexcept
{
    try {
        const std::array<modeler::Message, 1> errors{
            modeler::Message{std::string(reason), std::string()}};
        write_failed_preview(result_, errors);
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

} // namespace desktop
