// SPDX-License-Identifier: MIT
#include "modeler/module_search_paths.h"

#include <system_error>

namespace modeler {

namespace fs = std::filesystem;

std::vector<fs::path> module_search_paths(std::string_view module_file)
{
    std::error_code failed;
    const fs::path program = fs::read_symlink("/proc/self/exe", failed);
    if (failed)
        return {};
    const fs::path folder = program.parent_path();
    const fs::path prefix = folder.parent_path();
    std::vector<fs::path> found{folder / module_file};
    for (const char* library_folder : {DASTREL_LIBRARY_FOLDER, "lib", "lib64"}) {
        const fs::path place = prefix / library_folder / "dastrel" / module_file;
        if (place != found.back())
            found.push_back(place);
    }
    return found;
}

} // namespace modeler
