// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hostapi/mesh_edit.h"
#include "hostapi/messages.h"
#include "hostapi/module.h"
#include "hostapi/monitor.h"
#include "hostapi/panel.h"
#include "hostapi/scene_objects.h"
#include "tests/hostapi/layout.h"

extern "C" void layout_in_c(std::size_t layout[LAYOUT_COUNT]);

namespace {

LAYOUT_FUNCTION(layout_in_cpp)

TEST(HostApi, IsLaidOutAlikeInCAndInCpp)
{
    std::array<std::size_t, LAYOUT_COUNT> c{};
    std::array<std::size_t, LAYOUT_COUNT> cpp{};
    layout_in_c(c.data());
    layout_in_cpp(cpp.data());
    EXPECT_EQ(c, cpp);
}

TEST(HostApi, PacksTheFirstCharacterIntoTheHighestByte)
{
    EXPECT_EQ(LWPOLTYPE_FACE, 0x46414345U);
    EXPECT_EQ(LWVMAP_TXUV, 0x54585556U);
    EXPECT_EQ(LWVMAP_WGHT, 0x57474854U);
    EXPECT_EQ(LWVMAP_MORF, 0x4D4F5246U);
    EXPECT_EQ(LWVMAP_MNVW, 0x4D4E5657U);
    EXPECT_EQ(LWVMAP_SPOT, 0x53504F54U);
    EXPECT_EQ(LWVMAP_TDVT, 0x54445654U);
    EXPECT_EQ(LWID_PACK('\xFF', 0, 0, '\xFE'), 0xFF0000FEU) << "no sign is carried along";
}

TEST(HostApi, HasTheWordsCodesAndNamesThatModulesAreBuiltOn)
{
    EXPECT_EQ(MODULE_SYNC_WORD, 0x04121994U);
    EXPECT_EQ(MODULE_SYSTEM_VERSION, 3U);
    EXPECT_EQ(MODULE_MACHINE_WORD, 0x400U);
    EXPECT_STREQ(MODULE_DESCRIPTOR_SYMBOL, "_mod_descrip");
    EXPECT_EQ(GLOBAL_USE_TRANSIENT, 0);
    EXPECT_EQ(AFUNC_OK, 0);
    EXPECT_EQ(AFUNC_BADLOCAL, 3);
    EXPECT_EQ(OPLYR_FG, 1);
    EXPECT_EQ(OPLYR_BG, 2);
    EXPECT_EQ(OPCOUNT_ALL, 0);
    EXPECT_EQ(OPCOUNT_SELECTED, 1);
    EXPECT_EQ(OPSEL_USER, 1);
    EXPECT_EQ(EDERR_NONE, 0);
    EXPECT_EQ(EDPF_SELECTED, 1);
    EXPECT_EQ(SRVTAG_VALUE(SRVTAG_USERNAME, LANGID_USENGLISH), 0x00000409U);
    EXPECT_EQ(SRVTAG_VALUE(SRVTAG_BUTTONNAME, LANGID_USENGLISH), 0x00010409U);
    EXPECT_EQ(SRVTAG_VALUE(SRVTAG_ENABLE, 0), 0x00050000U);
    EXPECT_EQ(SRVTAG_KIND(0x00050409U), 5U);
    EXPECT_STREQ(LWMESSAGEFUNCS_GLOBAL, "Info Messages 3");
    EXPECT_STREQ(LWOBJECTFUNCS_GLOBAL, "Scene Objects 7");
    EXPECT_STREQ(LWXPANELFUNCS_GLOBAL, "LWXPanel 2");
    EXPECT_STREQ(LWMONITORFUNCS_GLOBAL, "LWM: Dynamic Monitor");
}

TEST(HostApi, EveryHeaderIsCompiledAlone)
{
    std::istringstream names(HEADERS_COMPILED_ALONE);
    std::vector<std::string> compiled;
    for (std::string name; names >> name;)
        compiled.push_back(name + ".h");
    std::vector<std::string> present;
    for (const auto& entry : std::filesystem::directory_iterator(DASTREL_SOURCE_DIR "/hostapi"))
        if (entry.path().extension() == ".h")
            present.push_back(entry.path().filename().string());
    std::sort(compiled.begin(), compiled.end());
    std::sort(present.begin(), present.end());
    EXPECT_EQ(present, compiled);
}

} // namespace
