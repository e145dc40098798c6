// SPDX-License-Identifier: MIT
#include "cli/module_finder.h"

#include <system_error>

#include <fmt/format.h>

#include "cli/errors.h"
#include "modeler/errors.h"
#include "modeler/module_search_paths.h"

namespace cli {

namespace {

namespace fs = std::filesystem;

constexpr const char* module_file = "dastrel.p";

bool is_file(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_regular_file(path, ignored);
}

} // namespace

fs::path find_module(const std::string& named)
{
    if (!named.empty()) {
        if (!is_file(named))
            throw Failure(ExitStatus::host, fmt::format("{}: there is no such module file", named),
                          {named, {}});
        return fs::absolute(named);
    }
    std::string looked;
    for (const fs::path& place : modeler::module_search_paths(module_file)) {
        if (is_file(place))
            return place;
        looked += (looked.empty() ? " " : ", ") + place.string();
    }
    throw Failure(ExitStatus::host,
                  fmt::format("the module {} was not found; name it with --module FILE; "
                              "it was looked for at{}",
                              module_file, looked));
}

modeler::Module load_module(const std::string& named)
{
    try {
        return modeler::Module::load(find_module(named));
    } catch (const modeler::ModuleError& error) {
        throw Failure(ExitStatus::host, error.what(), {error.file().string(), error.step()});
    }
}

} // namespace cli
