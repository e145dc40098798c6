// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "formats/file_writer.h"

namespace test {

/// Writes a file without the code under test.
inline void put(const std::filesystem::path& path, std::string_view text)
{
    std::ofstream(path, std::ios::binary) << text;
}

/// Returns the content of a file; empty when it cannot be read.
inline std::string get(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes a file with a FileWriter and commits it.
inline void write_whole(const std::filesystem::path& path, std::string_view text)
{
    formats::FileWriter file(path);
    file.write(std::as_bytes(std::span(text)));
    file.commit();
}

} // namespace test
