// SPDX-License-Identifier: MIT
// The module file as the linker left it.
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// The names that the module file defines for others.
std::vector<std::string> exported_names()
{
    const std::string command =
        std::string(DASTREL_NM) + " -D --defined-only '" + DASTREL_MODULE_FILE + "'";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::vector<std::string> names;
    std::array<char, 512> line{};
    while (pipe != nullptr && std::fgets(line.data(), line.size(), pipe.get()) != nullptr) {
        std::string text = line.data();
        text.erase(text.find_last_not_of('\n') + 1);
        names.push_back(text.substr(text.rfind(' ') + 1));
    }
    return names;
}

TEST(ModuleFile, ExportsItsDescriptorAlone)
{
    EXPECT_EQ(exported_names(), std::vector<std::string>{"_mod_descrip"});
}

} // namespace
