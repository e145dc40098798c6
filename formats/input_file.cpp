// SPDX-License-Identifier: MIT
#include "formats/input_file.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/errors.h"

namespace formats {

namespace fs = std::filesystem;

namespace {

constexpr const char* cannot_open = "cannot be opened";
constexpr const char* cannot_read = "cannot be read";

void check_kind(const fs::path& path, const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        throw FileError(path, cannot_read, "it is a folder; name a file in it");
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        throw FileError(path, cannot_read, "it is a device; only files and pipes are read");
}

} // namespace

void check_input_path(const fs::path& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) != 0)
        throw FileError(path, cannot_open, errno);
    check_kind(path, status);
    if (::access(path.c_str(), R_OK) != 0)
        throw FileError(path, cannot_open, errno);
}

InputFile open_input(const fs::path& path)
{
    check_input_path(path);
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.number() < 0)
        throw FileError(path, cannot_open, errno);
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0)
        throw FileError(path, cannot_read, errno);
    check_kind(path, status);
    return {path, std::move(file), S_ISREG(status.st_mode) != 0,
            static_cast<std::uint64_t>(status.st_size)};
}

InputFile standard_input()
{
    const fs::path name = "standard input";
    struct stat status = {};
    if (::fstat(STDIN_FILENO, &status) != 0)
        throw FileError(name, cannot_read, errno);
    if (::isatty(STDIN_FILENO) == 1)
        throw FileError(name, cannot_read,
                        "it is a terminal; name a file, or send one through a pipe");
    if (!S_ISSOCK(status.st_mode))
        check_kind(name, status);
    Descriptor file(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    if (file.number() < 0)
        throw FileError(name, cannot_read, errno);
    return {name, std::move(file)};
}

} // namespace formats
