// SPDX-License-Identifier: MIT
#include "formats/part_file.h"

#include <cerrno>
#include <cstdint>
#include <exception>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "formats/descriptor.h"

namespace formats {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view part_suffix = ".part";

/// The FNV-1a hash, which is the same in every build, unlike std::hash.
std::uint64_t stable_hash(std::string_view text) noexcept
{
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3u;
    return hash;
}

/// Removes a part file unless it is locked.
void remove_if_abandoned(const fs::path& path) noexcept
{
    // non-blocking, in case the name belongs to a pipe
    const Descriptor file(::open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file.number() < 0)
        return;
    struct stat opened = {};
    struct stat named = {};
    // Lock first and check the name again afterwards: then nobody else can rename the file.
    if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0 && ::fstat(file.number(), &opened) == 0 &&
        ::lstat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
        opened.st_ino == named.st_ino && S_ISREG(opened.st_mode) && opened.st_uid == ::geteuid())
        ::unlink(path.c_str());
}

} // namespace

std::string part_file_prefix(const fs::path& target)
{
    return fmt::format(".dastrel-{:016x}-", stable_hash(target.filename().native()));
}

bool lock_part_file(int descriptor) noexcept
{
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && status.st_nlink > 0;
}

void remove_abandoned_part_files(const fs::path& target) noexcept
{
    try {
        const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
        const std::string prefix = part_file_prefix(target);
        // GCC 12's std::filesystem::directory_iterator terminates when out of memory.
        const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.c_str()), ::closedir);
        if (entries == nullptr)
            return;
        while (const dirent* const entry = ::readdir(entries.get())) {
            const std::string_view name = entry->d_name;
            if (name.starts_with(prefix) && name.ends_with(part_suffix))
                remove_if_abandoned(folder / name);
        }
    } catch (const std::exception&) {
        return; // without memory the files stay until the next time
    }
}

void copy_access(int descriptor, const fs::path& target) noexcept
{
    struct stat old = {};
    struct stat own = {};
    if (::stat(target.c_str(), &old) != 0 || ::fstat(descriptor, &own) != 0)
        return;
    bool group_kept = own.st_gid == old.st_gid;
    if (own.st_uid != old.st_uid || !group_kept) {
        constexpr auto unchanged = static_cast<uid_t>(-1);
        group_kept = ::fchown(descriptor, old.st_uid, old.st_gid) == 0 || group_kept ||
                     ::fchown(descriptor, unchanged, old.st_gid) == 0;
    }
    mode_t mode = old.st_mode & 0777u;
    if (!group_kept) {
        // The group could not be kept: members of one group are now others and vice versa, so
        // both get the intersection of the permissions.
        const mode_t shared = (mode >> 3u) & mode & 07u;
        mode = (mode & 0700u) | shared << 3u | shared;
    }
    // Best effort: on file systems without permissions there are none to keep.
    static_cast<void>(::fchmod(descriptor, mode));
}

} // namespace formats
