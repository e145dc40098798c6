// SPDX-License-Identifier: MIT
#include "cli/files.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <span>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include "cli/errors.h"
#include "formats/errors.h"
#include "formats/file_writer.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

/// Files without an ending (pipes, devices) are judged by what is in them.
bool has_foreign_ending(const std::string& name)
{
    std::string ending = fs::path(name).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return !ending.empty() && ending != ".lwo";
}

std::string system_reason(int error_number)
{
    return std::error_code(error_number, std::generic_category()).message();
}

std::vector<std::byte> read_stdin()
{
    std::vector<std::byte> bytes;
    std::array<std::byte, 65536> block{};
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw Failure(ExitStatus::input,
                          fmt::format("standard input: cannot be read: {}", system_reason(errno)));
        if (count == 0)
            return bytes;
        bytes.insert(bytes.end(), block.begin(), block.begin() + count);
    }
}

} // namespace

std::string short_name(const std::string& name)
{
    if (name == standard_stream)
        return "standard stream";
    const fs::path path(name);
    return path.has_filename() ? path.filename().string() : name;
}

std::string stem(const std::string& name) { return fs::path(short_name(name)).stem().string(); }

void judge_input(const std::string& name)
{
    if (name == standard_stream)
        return;
    const auto refuse = [&](const std::string& reason) {
        throw Failure(ExitStatus::input, fmt::format("{}: {}", name, reason));
    };
    std::error_code failed;
    const fs::file_status status = fs::status(name, failed);
    if (!fs::exists(status))
        refuse("cannot be opened: " + (failed ? failed.message() : system_reason(ENOENT)));
    if (fs::is_directory(status))
        refuse("is a folder; name a file in it");
    if (fs::is_regular_file(status) && has_foreign_ending(name))
        refuse("is in a format that is not read; only LWO2 object files (.lwo) are");
    if (::access(name.c_str(), R_OK) != 0)
        refuse("cannot be opened: " + system_reason(errno));
}

void judge_output(const std::string& name)
{
    if (name == standard_stream) {
        if (::isatty(STDOUT_FILENO) == 1)
            throw Failure(ExitStatus::output, "standard output is a terminal, and an object file "
                                              "is no text; redirect it or name a file with -o");
        return;
    }
    if (has_foreign_ending(name))
        throw Failure(ExitStatus::output,
                      fmt::format("{}: is in a format that is not written; only LWO2 object files "
                                  "(.lwo) are",
                                  name));
    try {
        formats::check_output_path(name);
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what());
    }
}

mesh::Document read_document(const std::string& name, Console& console)
{
    const auto warn = [&](const std::string& text) {
        console.warning(
            fmt::format("{}: {}", name == standard_stream ? "standard input" : name, text));
    };
    try {
        if (name == standard_stream)
            return formats::read_lwo2(read_stdin(), warn);
        return formats::read_lwo2_file(name, warn);
    } catch (const formats::FormatError& error) {
        throw Failure(ExitStatus::input, name == standard_stream
                                             ? fmt::format("standard input: {}", error.what())
                                             : std::string(error.what()));
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::input, error.what());
    }
}

void write_document(const mesh::Document& document, const std::string& name, Console& console)
{
    const auto warn = [&](const std::string& text) {
        console.warning(fmt::format("{}: {}", name, text));
    };
    try {
        if (name == standard_stream) {
            const std::vector<std::byte> bytes = formats::write_lwo2(document, warn);
            write_stdout({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        } else {
            formats::write_lwo2_file(document, name, warn);
        }
    } catch (const formats::LimitError& error) {
        throw Failure(ExitStatus::output, fmt::format("{}: {}", name, error.what()));
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what());
    }
}

} // namespace cli
