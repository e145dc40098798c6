// SPDX-License-Identifier: MIT
#include "formats/file_writer.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/descriptor.h"
#include "formats/errors.h"
#include "formats/part_file.h"

namespace formats {

namespace {

namespace fs = std::filesystem;

constexpr const char* cannot_write = "cannot be written";

/// The path of a temporary file in memory that a signal handler can read.
struct Unfinished {
    enum State : int { unused, changing, listed };
    std::atomic<int> state{unused};
    std::array<char, PATH_MAX> path{};
};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler reads it");

constexpr int most_unfinished = 16;
std::array<Unfinished, most_unfinished> unfinished_files;

/// Registers a temporary file; returns its slot, or -1 if the table is full.
int list_unfinished(const std::string& path) noexcept
{
    if (path.size() >= PATH_MAX)
        return -1;
    for (int i = 0; i < most_unfinished; ++i) {
        Unfinished& file = unfinished_files[static_cast<std::size_t>(i)];
        int expected = Unfinished::unused;
        if (!file.state.compare_exchange_strong(expected, Unfinished::changing))
            continue;
        std::memcpy(file.path.data(), path.c_str(), path.size() + 1);
        file.state.store(Unfinished::listed);
        return i;
    }
    return -1;
}

void forget_unfinished(int slot) noexcept
{
    if (slot >= 0)
        unfinished_files[static_cast<std::size_t>(slot)].state.store(Unfinished::unused);
}

/// The descriptor that a path such as /dev/stdout or /dev/fd/3 denotes. It is written directly,
/// since it may refer to a file that the caller's shell has open.
std::optional<int> named_descriptor(const fs::path& path)
{
    const std::string text = path.lexically_normal().string();
    if (text == "/dev/stdout")
        return STDOUT_FILENO;
    if (text == "/dev/stderr")
        return STDERR_FILENO;
    for (const std::string_view folder : {"/dev/fd/", "/proc/self/fd/"}) {
        if (!text.starts_with(folder))
            continue;
        int number = -1;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data() + folder.size(), end, number);
        if (error == std::errc() && stop == end)
            return number;
    }
    return std::nullopt;
}

/// The status of a target; empty if it does not exist. @throws FileError
std::optional<struct stat> status_of(const fs::path& path, const fs::path& target)
{
    struct stat status = {};
    if (::stat(target.c_str(), &status) == 0)
        return status;
    if (errno != ENOENT)
        throw FileError(path, cannot_write, errno);
    return std::nullopt;
}

void sync(int descriptor, const fs::path& path)
{
    // some file systems do not support fsync for folders or devices
    if (::fsync(descriptor) != 0 && errno != EINVAL && errno != ENOTSUP)
        throw FileError(path, cannot_write, errno);
}

} // namespace

fs::path resolve_links(const fs::path& path)
{
    constexpr int most = 40; // the limit of the system
    fs::path target = path;
    for (int i = 0; i < most; ++i) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(target, error)))
            return target;
        const fs::path next = fs::read_symlink(target, error);
        if (error)
            throw FileError(path, cannot_write, error.value());
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    throw FileError(path, cannot_write, ELOOP);
}

fs::path folder_of(const fs::path& file)
{
    const fs::path folder = file.parent_path();
    return folder.empty() ? fs::path(".") : folder;
}

FileWriter::FileWriter(const fs::path& path) : path_(path)
{
    check_output_path(path);
    if (const auto descriptor = named_descriptor(path)) {
        descriptor_ = ::fcntl(*descriptor, F_DUPFD_CLOEXEC, 0);
    } else {
        target_ = resolve_links(path);
        const auto status = status_of(path_, target_);
        if (!status || S_ISREG(status->st_mode)) {
            open_beside();
            return;
        }
        descriptor_ = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
    }
    if (descriptor_ < 0)
        throw FileError(path_, cannot_write, errno);
}

void FileWriter::open_beside()
{
    static std::atomic<unsigned> counter{0};
    const fs::path folder = fs::absolute(folder_of(target_));
    remove_abandoned_part_files(target_);
    const std::string prefix = part_file_prefix(target_);
    // If there is a target, nobody else can open the file until it gets the target's permissions. A
    // new file has the permissions of the umask from the start.
    const mode_t mode = status_of(path_, target_) ? 0600 : 0666;
    for (;;) {
        // not derived from the target's name, which may already have the maximum length
        temporary_ = folder / fmt::format("{}{}-{}.part", prefix, ::getpid(), counter++);
        // registered first: a signal between the two calls must not leave a file behind
        slot_ = list_unfinished(temporary_.string());
        descriptor_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        const int error = errno;
        if (descriptor_ >= 0 && lock_part_file(descriptor_))
            return;
        if (descriptor_ >= 0) {
            ::unlink(temporary_.c_str());
            ::close(std::exchange(descriptor_, -1));
        } else if (error != EEXIST) {
            temporary_.clear();
            forget_unfinished(std::exchange(slot_, -1));
            throw FileError(path_, cannot_write, error);
        }
        forget_unfinished(std::exchange(slot_, -1));
    }
}

FileWriter::~FileWriter()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
    if (!temporary_.empty())
        ::unlink(temporary_.c_str());
    forget_unfinished(slot_);
}

void FileWriter::write(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            throw FileError(path_, cannot_write, errno);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void FileWriter::commit()
{
    if (!temporary_.empty()) {
        copy_access(descriptor_, target_);
        sync(descriptor_, path_);
    }
    // A second descriptor keeps the part file locked until it is renamed.
    const Descriptor lock(::fcntl(descriptor_, F_DUPFD_CLOEXEC, 0));
    if (::close(std::exchange(descriptor_, -1)) != 0 && errno != EINTR)
        throw FileError(path_, cannot_write, errno);
    if (temporary_.empty())
        return;
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        throw FileError(path_, cannot_write, errno);
    temporary_.clear();
    forget_unfinished(slot_);
    slot_ = -1;
    // Sync the folder: without it a power failure could undo the rename.
    const int folder = ::open(folder_of(target_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        static_cast<void>(::fsync(folder));
        ::close(folder);
    }
}

void remove_unfinished_files() noexcept
{
    for (Unfinished& file : unfinished_files)
        if (file.state.load() == Unfinished::listed)
            ::unlink(file.path.data());
}

void check_output_path(const fs::path& path)
{
    if (path.empty())
        throw FileError(path, cannot_write, "the name is empty");
    if (const auto descriptor = named_descriptor(path)) {
        const int mode = ::fcntl(*descriptor, F_GETFL);
        if (mode < 0)
            throw FileError(path, cannot_write, errno);
        if ((mode & O_ACCMODE) == O_RDONLY)
            throw FileError(path, cannot_write, "it is open for reading only");
        return;
    }
    const fs::path target = resolve_links(path);
    const fs::path folder = folder_of(target);
    std::error_code error;
    if (!fs::exists(folder, error))
        throw FileError(path, cannot_write,
                        fmt::format("there is no folder {}; make it first", folder.string()));
    if (!fs::is_directory(folder, error))
        throw FileError(path, cannot_write, fmt::format("{} is not a folder", folder.string()));
    if (!target.has_filename())
        throw FileError(path, cannot_write, "it is a folder; name a file in it");
    const auto status = status_of(path, target);
    if (status && S_ISDIR(status->st_mode))
        throw FileError(path, cannot_write, "it is a folder; name a file in it");
    if (status && ::access(target.c_str(), W_OK) != 0)
        throw FileError(path, cannot_write, errno);
    const bool beside = !status || S_ISREG(status->st_mode);
    if (beside && ::access(folder.c_str(), W_OK | X_OK) != 0)
        throw FileError(path, cannot_write,
                        fmt::format("the folder {}: {}", folder.string(),
                                    std::generic_category().message(errno)));
}

} // namespace formats
