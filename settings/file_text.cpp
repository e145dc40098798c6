// SPDX-License-Identifier: MIT
#include "settings/file_text.h"

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "settings/errors.h"

namespace settings {

namespace {

/// Size limit: thousands of times the size of all settings.
constexpr std::size_t most_bytes = std::size_t{1024} * 1024;

class OpenFile {
public:
    explicit OpenFile(const std::filesystem::path& file)
        : number_(::open(file.c_str(), O_RDONLY | O_CLOEXEC))
    {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile()
    {
        if (number_ >= 0)
            ::close(number_);
    }
    [[nodiscard]] int number() const noexcept { return number_; }

private:
    int number_;
};

[[noreturn]] void refuse(const std::filesystem::path& file, const std::string& reason)
{
    throw UnreadableSettings(
        fmt::format("{}: the settings cannot be read: {}", file.string(), reason));
}

[[noreturn]] void refuse(const std::filesystem::path& file, int error_number)
{
    refuse(file, std::generic_category().message(error_number));
}

void check_kind(const std::filesystem::path& file, const struct stat& status)
{
    if (S_ISDIR(status.st_mode))
        refuse(file, "it is a folder; name a file in it");
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        refuse(file, "it is a device; only files and pipes are read");
}

/// False if the text cannot be a JSON object.
bool may_be_object(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos) // where the parser would end
        return false;
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    if (text.size() >= byte_order_mark.size() && text.starts_with(byte_order_mark))
        text.remove_prefix(byte_order_mark.size());
    else if (byte_order_mark.starts_with(text))
        return true;
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos || text[first] == '{';
}

} // namespace

std::string read_file_text(const std::filesystem::path& file)
{
    // Before opening: opening a device may block or have side effects.
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0)
        refuse(file, errno);
    check_kind(file, status);
    const OpenFile open(file);
    if (open.number() < 0 || ::fstat(open.number(), &status) != 0)
        refuse(file, errno);
    check_kind(file, status);

    constexpr std::size_t step = 4096;
    std::string text;
    for (;;) {
        const std::size_t have = text.size();
        text.resize(have + step);
        const ssize_t got = ::read(open.number(), text.data() + have, step);
        const int problem = got < 0 ? errno : 0;
        text.resize(have + (got > 0 ? static_cast<std::size_t>(got) : 0));
        if (problem != 0 && problem != EINTR)
            refuse(file, problem);
        if (got == 0)
            return text;
        if (!may_be_object(text))
            throw WrongSettings(
                fmt::format("{}: is not a JSON object; `dastrel settings --json` prints a "
                            "file to start from",
                            file.string()));
        if (text.size() > most_bytes)
            throw WrongSettings(fmt::format("{}: is larger than 1 MiB, which no settings file "
                                            "needs to be; name the file of the settings",
                                            file.string()));
    }
}

} // namespace settings
