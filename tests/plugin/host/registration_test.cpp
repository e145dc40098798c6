// SPDX-License-Identifier: MIT
#include <cstdint>

#include "plugin/host/servmain.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

TEST(Registration, TheDescriptorHoldsTheWordsThatAHostChecks)
{
    EXPECT_EQ(_mod_descrip.sync_word, 0x04121994U);
    EXPECT_EQ(_mod_descrip.system_version, 3U);
    EXPECT_EQ(_mod_descrip.machine_word, 0x400U);
    EXPECT_EQ(_mod_descrip.startup, &Startup);
    EXPECT_EQ(_mod_descrip.shutdown, &Shutdown);
    EXPECT_EQ(_mod_descrip.servers, ServerDesc);
}

TEST(Registration, ThereIsOneServer)
{
    EXPECT_STREQ(ServerDesc[0].class_name, "MeshDataEdit");
    EXPECT_STREQ(ServerDesc[0].name, "Dastrel");
    EXPECT_EQ(ServerDesc[0].activate, &CloneMake);
    EXPECT_EQ(ServerDesc[1].class_name, nullptr);
    EXPECT_EQ(ServerDesc[1].name, nullptr);
    EXPECT_EQ(ServerDesc[1].activate, nullptr);
    EXPECT_EQ(ServerDesc[1].tags, nullptr);
}

TEST(Registration, ItsTagsNameItAndTellWhenItIsEnabled)
{
    const ServerTagInfo* const tags = ServerDesc[0].tags;
    EXPECT_STREQ(tags[0].text, "Dastrel");
    EXPECT_EQ(tags[0].tag, 0x00000409U);
    EXPECT_STREQ(tags[1].text, "Dastrel");
    EXPECT_EQ(tags[1].tag, 0x00010409U);
    EXPECT_STREQ(tags[2].text, "pol");
    EXPECT_EQ(tags[2].tag, 0x00050000U);
    EXPECT_EQ(tags[3].text, nullptr);
    EXPECT_EQ(tags[3].tag, 0U);
}

TEST(Registration, StartupGivesItsTokenAndShutdownTakesIt)
{
    void* const token = Startup();
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(token), 4U);
    Shutdown(token);
    EXPECT_EQ(Startup(), token);
}

} // namespace
} // namespace dastrel
