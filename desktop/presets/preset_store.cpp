// SPDX-License-Identifier: MIT
#include "desktop/presets/preset_store.h"

#include <algorithm>
#include <span>
#include <system_error>

#include <fmt/format.h>

#include "formats/file_writer.h"

namespace desktop {

namespace fs = std::filesystem;

namespace {

constexpr const char* ending = ".json";

} // namespace

std::vector<std::string> PresetStore::names() const
{
    std::vector<std::string> found;
    std::error_code failed;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder_, failed))
        if (entry.path().extension() == ending)
            found.push_back(entry.path().stem().string());
    std::sort(found.begin(), found.end());
    return found;
}

bool PresetStore::has(const std::string& name) const
{
    std::error_code failed;
    return fs::is_regular_file(file_of(name), failed);
}

fs::path PresetStore::file_of(const std::string& name) const
{
    constexpr std::size_t longest = 100;
    if (name.empty() || name.size() > longest || name.front() == '.' ||
        name.find_first_of(std::string_view("/\\\0\n", 4)) != std::string::npos)
        throw PresetError(fmt::format("'{}' cannot be the name of a preset; take a short one "
                                      "without slashes that does not begin with a dot",
                                      name));
    return folder_ / (name + ending);
}

void PresetStore::save(const std::string& name, const std::string& text)
{
    const fs::path file = file_of(name);
    std::error_code failed;
    fs::create_directories(folder_, failed);
    if (failed)
        throw PresetError(
            fmt::format("{}: cannot be made: {}", folder_.string(), failed.message()));
    write_text(file, text);
}

void PresetStore::remove(const std::string& name)
{
    std::error_code failed;
    if (!fs::remove(file_of(name), failed))
        throw PresetError(fmt::format("the preset '{}' cannot be deleted: {}", name,
                                      failed ? failed.message() : "it is not there"));
}

void write_text(const fs::path& file, const std::string& text)
{
    formats::FileWriter writer(file);
    writer.write(std::as_bytes(std::span(text)));
    writer.commit();
}

} // namespace desktop
