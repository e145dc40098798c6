// SPDX-License-Identifier: MIT
#include "cli/files.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

#include "cli/errors.h"
#include "formats/errors.h"
#include "formats/file_kind.h"
#include "formats/file_writer.h"
#include "formats/input_file.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "formats/merge.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

/// Files without an extension (pipes, devices) are checked by their content.
bool has_foreign_ending(const std::string& name)
{
    std::string ending = fs::path(name).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return !ending.empty() && ending != ".lwo";
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

void validate_input(const std::string& name)
{
    if (name == standard_stream)
        return;
    try {
        formats::check_input_path(name);
        std::error_code failed;
        if (!fs::is_regular_file(name, failed) || !has_foreign_ending(name))
            return;
        const std::string kind = formats::foreign_kind(fs::path(name));
        throw Failure(ExitStatus::input,
                      kind.empty() ? fmt::format("{}: is an LWO2 object under another ending; "
                                                 "rename it so that it ends in .lwo",
                                                 name)
                                   : fmt::format("{}: {}", name, kind),
                      {name, {}});
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::input, error.what(), {name, {}});
    }
}

void validate_output(const std::string& name)
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
                                  name),
                      {name, {}});
    try {
        formats::check_output_path(name);
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what(), {name, {}});
    }
}

mesh::Document read_document(const std::string& name, Console& console)
{
    const auto warn = [&](const std::string& text) {
        console.warning(
            fmt::format("{}: {}", name == standard_stream ? "standard input" : name, text));
    };
    try {
        return formats::read_lwo2_file(
            name == standard_stream ? formats::standard_input() : formats::open_input(name), warn);
    } catch (const formats::FormatError& error) {
        throw Failure(ExitStatus::input, error.what(),
                      {name, fmt::format("chunk {} at byte {}", error.chunk(), error.offset())});
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::input, error.what(), {name, {}});
    }
}

void append_model(mesh::Document& document, mesh::Document model, const std::string& name,
                  Console& console)
{
    const auto warn = [&](const std::string& text) { console.warning(text); };
    try {
        formats::append_document(document, std::move(model), stem(name), warn);
    } catch (const formats::LimitError& error) {
        throw Failure(ExitStatus::input, fmt::format("{}: {}", name, error.what()), {name, {}});
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
        throw Failure(ExitStatus::output, fmt::format("{}: {}", name, error.what()), {name, {}});
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what(), {name, {}});
    }
}

} // namespace cli
