// SPDX-License-Identifier: MIT
// Who may know whom: read off the includes of every source.
#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

/// One include of one file. `target` is as it stands in the brackets or quotes.
struct Include {
    std::string file;
    std::string target;
    bool quoted = false;
};

bool is_source(const fs::path& path)
{
    static const std::set<std::string> extensions = {".h", ".hpp", ".c", ".cpp"};
    return extensions.count(path.extension().string()) > 0;
}

std::vector<Include> includes_of(const std::string& folder)
{
    static const std::regex pattern(R"(^\s*#\s*include\s*(["<])([^">]+)[">])");
    const fs::path root = DASTREL_SOURCE_DIR;
    std::vector<Include> found;
    if (!fs::exists(root / folder)) // not part of this tree
        return found;
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        if (!entry.is_regular_file() || !is_source(entry.path()))
            continue;
        std::ifstream source(entry.path());
        std::smatch match;
        for (std::string line; std::getline(source, line);)
            if (line.find("include") != std::string::npos &&
                std::regex_search(line, match, pattern))
                found.push_back({fs::relative(entry.path(), root).generic_string(), match[2],
                                 match[1] == "\""});
    }
    return found;
}

bool begins_with(const std::string& text, const std::string& beginning)
{
    return text.compare(0, beginning.size(), beginning) == 0;
}

bool is_of(const std::string& target, const std::vector<std::string>& components)
{
    return std::any_of(components.begin(), components.end(),
                       [&target](const std::string& component) {
                           return begins_with(target, component + "/") || target == component;
                       });
}

/// The headers of Qt that are named like its classes.
bool is_qt(const std::string& target)
{
    return target.size() > 1 && target[0] == 'Q' && std::isupper(target[1]) != 0;
}

/// The headers of the standard library have neither a folder nor an extension.
bool is_standard(const std::string& target)
{
    return target.find('/') == std::string::npos && target.find('.') == std::string::npos &&
           !is_qt(target);
}

/// A component, the components that it may use, and the headers from outside that it may use
/// besides the standard library (a folder, or a whole name).
struct Component {
    std::string name;
    std::vector<std::string> allowed;
    std::vector<std::string> foreign;
    bool qt = false; ///< may use Qt
};

const std::vector<Component> components = {
    {"hostapi", {"hostapi"}, {"stdint.h", "stddef.h"}},
    {"mesh", {"mesh"}, {"sys", "unistd.h", "utf8.h"}},
    {"plugin", {"plugin", "hostapi"}, {}},
    {"formats", {"formats", "mesh"}, {"fmt", "dirent.h", "fcntl.h", "sys", "unistd.h", "assimp"}},
    {"modeler",
     {"modeler", "hostapi", "mesh"},
     {"fmt", "dlfcn.h", "link.h", "fcntl.h", "sys", "unistd.h"}},
    {"picture",
     {"picture", "mesh"},
     {"fmt", "embree3", "GL", "ft2build.h", "lodepng.h", "fcntl.h", "sys", "unistd.h"}},
    {"settings", {"settings", "modeler"}, {"fmt", "nlohmann", "fcntl.h", "sys", "unistd.h"}},
    {"cli",
     {"cli", "settings", "modeler", "formats", "picture", "mesh"},
     {"fmt", "CLI", "nlohmann", "utf8.h", "fcntl.h", "sys", "unistd.h"}},
    {"desktop",
     {"desktop", "settings", "modeler", "formats", "picture", "mesh"},
     {"fmt", "fcntl.h", "sys", "unistd.h"},
     true},
};

class ComponentTest : public testing::TestWithParam<Component> {};

TEST_P(ComponentTest, UsesOnlyAllowedHeaders)
{
    const Component& component = GetParam();
    for (const Include& include : includes_of(component.name)) {
        if (include.quoted)
            EXPECT_TRUE(is_of(include.target, component.allowed))
                << include.file << " includes \"" << include.target
                << "\": use the full path from the root, of a component that " << component.name
                << " may use";
        else
            EXPECT_TRUE(is_standard(include.target) || is_of(include.target, component.foreign) ||
                        (component.qt && is_qt(include.target)))
                << include.file << " includes <" << include.target << ">, which " << component.name
                << " may not use";
    }
}

TEST_P(ComponentTest, IncludesExistingFiles)
{
    for (const Include& include : includes_of(GetParam().name)) {
        if (!include.quoted)
            continue;
        EXPECT_TRUE(fs::exists(fs::path(DASTREL_SOURCE_DIR) / include.target))
            << include.file << " includes \"" << include.target << "\"";
    }
}

INSTANTIATE_TEST_SUITE_P(Components, ComponentTest, testing::ValuesIn(components),
                         [](const auto& tested) { return tested.param.name; });

TEST(IncludeRules, AreAppliedToFilesThatWereRead)
{
    for (const char* component :
         {"hostapi", "mesh", "plugin", "formats", "modeler", "settings", "cli", "desktop"})
        EXPECT_GT(includes_of(component).size(), 2U) << component;
}

TEST(IncludeRules, KeepQtInTheWindow)
{
    for (const Include& include : includes_of("tests")) {
        if (!begins_with(include.file, "tests/desktop/")) {
            EXPECT_FALSE(is_qt(include.target)) << include.file;
        }
    }
}

/// Within the module: which folders a folder may know, besides itself. Of host/, all but host/
/// itself see only the run state and the messages.
const std::map<std::string, std::vector<std::string>> module_folders = {
    {"util", {}},
    {"geometry", {"plugin/util"}},
    {"random", {"plugin/util", "plugin/geometry"}},
    {"weights", {"plugin/util", "plugin/geometry", "plugin/host/run_state.h"}},
    {"settings", {"plugin/host/run_state.h", "plugin/host/gui_messages.h"}},
    {"engine",
     {"plugin/util", "plugin/geometry", "plugin/random", "plugin/weights", "plugin/settings",
      "plugin/host/run_state.h"}},
    {"host",
     {"plugin/util", "plugin/geometry", "plugin/random", "plugin/weights", "plugin/settings",
      "plugin/engine"}},
};

TEST(IncludeRules, HoldWithinTheModule)
{
    for (const auto& [folder, allowed] : module_folders) {
        const std::string own = "plugin/" + folder;
        for (const Include& include : includes_of(own)) {
            if (!include.quoted)
                continue;
            EXPECT_TRUE(is_of(include.target, {own, "hostapi"}) || is_of(include.target, allowed))
                << include.file << " includes \"" << include.target << '"';
        }
    }
}

TEST(IncludeRules, TheLiteralCommandKnowsNothingOfTheRealOne)
{
    const std::vector<Include> includes = includes_of("tests/literal");
    EXPECT_GT(includes.size(), 10U);
    for (const Include& include : includes) {
        if (include.quoted) {
            EXPECT_TRUE(is_of(include.target, {"tests/literal"}))
                << include.file << " includes \"" << include.target << '"';
        }
    }
}

} // namespace
