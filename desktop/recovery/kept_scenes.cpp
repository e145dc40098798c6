// SPDX-License-Identifier: MIT
#include "desktop/recovery/kept_scenes.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <span>
#include <stdexcept>
#include <system_error>

#include <fmt/format.h>

#include <unistd.h>

#include "formats/file_writer.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr const char* ending = ".lwo";

fs::path kept_folder()
{
    const char* const state = std::getenv("XDG_STATE_HOME");
    const char* const home = std::getenv("HOME");
    if (state != nullptr && fs::path(state).is_absolute()) // others are to be ignored
        return fs::path(state) / "dastrel" / "recovery";
    if (home != nullptr && *home != '\0')
        return fs::path(home) / ".local" / "state" / "dastrel" / "recovery";
    throw std::runtime_error("there is no home folder");
}

/// The note beside the scene: a line with the title, and a line with the roles as numbers.
fs::path note_of(fs::path file) { return file.replace_extension(".note"); }

void read_note(KeptScene& scene)
{
    std::ifstream note(note_of(scene.file));
    std::getline(note, scene.title);
    for (int role = 0; note >> role;)
        scene.roles.push_back(static_cast<modeler::LayerRole>(role));
}

} // namespace

fs::path new_kept_file()
{
    const fs::path folder = kept_folder();
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms::owner_all);
    const std::time_t now = std::time(nullptr);
    fs::path file;
    unsigned number = 0;
    do {
        file = folder /
               fmt::format("{}-{}-{}{}", static_cast<long long>(now), ::getpid(), number++, ending);
    } while (fs::exists(file));
    return file;
}

void write_kept_note(const KeptScene& scene)
{
    std::string text = scene.title;
    std::replace(text.begin(), text.end(), '\n', ' ');
    text += '\n';
    for (const modeler::LayerRole role : scene.roles)
        text += fmt::format("{} ", static_cast<int>(role));
    formats::FileWriter writer(note_of(scene.file));
    writer.write(std::as_bytes(std::span(text)));
    writer.commit();
}

std::vector<KeptScene> kept_scenes()
{
    std::vector<KeptScene> scenes;
    try {
        for (const fs::directory_entry& entry : fs::directory_iterator(kept_folder())) {
            if (entry.path().extension() != ending || !entry.is_regular_file())
                continue;
            scenes.push_back({entry.path(), {}, {}});
            read_note(scenes.back());
        }
    } catch (const std::exception&) {
        return scenes; // no folder: nothing was ever kept
    }
    std::sort(scenes.begin(), scenes.end(),
              [](const KeptScene& a, const KeptScene& b) { return a.file < b.file; });
    return scenes;
}

void remove_kept(const fs::path& file) noexcept
{
    try {
        std::error_code ignored;
        fs::remove(file, ignored);
        fs::remove(note_of(file), ignored);
    } catch (const std::bad_alloc&) {
        return; // it is offered once more
    }
}

} // namespace desktop
