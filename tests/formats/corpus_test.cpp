// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/lwo2_checks.h"

namespace {

std::vector<std::filesystem::path> corpus()
{
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(DASTREL_LWO2_CORPUS))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

TEST(FuzzCorpus, MeetsAllChecks)
{
    const auto files = corpus();
    EXPECT_GE(files.size(), 30u) << "seeds are missing from " << DASTREL_LWO2_CORPUS;
    for (const auto& path : files) {
        SCOPED_TRACE(path.filename().string());
        std::ifstream file(path, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
        ASSERT_FALSE(bytes.empty());
        EXPECT_EQ(fuzz::check_lwo2(std::as_bytes(std::span(bytes))), "");
    }
}

} // namespace
