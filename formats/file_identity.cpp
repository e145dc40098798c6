// SPDX-License-Identifier: MIT
#include "formats/file_identity.h"

#include <sys/stat.h>

#include "formats/errors.h"
#include "formats/file_writer.h"

namespace formats {

namespace {

namespace fs = std::filesystem;

fs::file_type type_of(const struct stat& status)
{
    if (S_ISREG(status.st_mode))
        return fs::file_type::regular;
    if (S_ISDIR(status.st_mode))
        return fs::file_type::directory;
    if (S_ISFIFO(status.st_mode))
        return fs::file_type::fifo;
    if (S_ISSOCK(status.st_mode))
        return fs::file_type::socket;
    return S_ISCHR(status.st_mode) ? fs::file_type::character : fs::file_type::unknown;
}

FileIdentity identity_of(const struct stat& status)
{
    return {status.st_dev, status.st_ino, {}, type_of(status)};
}

} // namespace

std::optional<FileIdentity> identify_file(const fs::path& path)
{
    struct stat status = {};
    if (::stat(path.c_str(), &status) == 0)
        return identity_of(status);
    try {
        const fs::path target = resolve_links(path);
        if (!target.has_filename() || ::stat(folder_of(target).c_str(), &status) != 0)
            return std::nullopt;
        FileIdentity made = identity_of(status);
        made.new_name = target.filename();
        made.type = fs::file_type::not_found;
        return made;
    } catch (const FileError&) {
        return std::nullopt;
    }
}

std::optional<FileIdentity> identify_descriptor(int descriptor)
{
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return std::nullopt;
    return identity_of(status);
}

} // namespace formats
