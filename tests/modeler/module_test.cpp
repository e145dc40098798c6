// SPDX-License-Identifier: MIT
#include "modeler/module.h"

#include <fstream>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "modeler/errors.h"
#include "tests/modeler/session.h"

namespace {

using modeler::Module;
using modeler::ModuleError;
using session::module_file;
using testing::HasSubstr;

TEST(ModuleLoad, ListsTheServersWithTheirTags)
{
    const Module module = Module::load(module_file("good"));
    ASSERT_EQ(module.servers().size(), 2u);
    const modeler::Server& good = module.servers()[0];
    EXPECT_EQ(good.class_name, "MeshDataEdit");
    EXPECT_EQ(good.name, "Good");
    EXPECT_EQ(good.user_name, "Menu name");
    EXPECT_EQ(good.button_name, "Button");
    EXPECT_EQ(good.enable_condition, "pol");
    EXPECT_EQ(module.file(), module_file("good"));
}

TEST(ModuleLoad, NamesAServerWithoutTagsByItsName)
{
    const Module module = Module::load(module_file("good"));
    const modeler::Server* const bare = module.find("Other", "Bare");
    ASSERT_NE(bare, nullptr);
    EXPECT_EQ(bare->user_name, "Bare");
    EXPECT_EQ(bare->button_name, "Bare");
    EXPECT_EQ(bare->enable_condition, "");
    EXPECT_EQ(module.find("MeshDataEdit", "Bare"), nullptr);
}

struct RefusalCase {
    const char* name;
    const char* step;
    const char* says;
};
class ModuleRefusal : public testing::TestWithParam<RefusalCase> {};

TEST_P(ModuleRefusal, NamesTheFileTheStepAndTheFault)
{
    try {
        (void)Module::load(module_file(GetParam().name));
        FAIL() << "was loaded";
    } catch (const ModuleError& error) {
        EXPECT_EQ(error.step(), GetParam().step);
        EXPECT_EQ(error.file(), module_file(GetParam().name));
        EXPECT_THAT(error.what(), HasSubstr(GetParam().says));
        EXPECT_THAT(error.what(), HasSubstr(GetParam().name));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Modules, ModuleRefusal,
    testing::Values(
        RefusalCase{"absent", "open", "cannot be loaded"},
        RefusalCase{"no_descriptor", "descriptor", "exports no '_mod_descrip'"},
        RefusalCase{"wrong_sync_word", "synchronisation word", "0x4121995 where 0x4121994"},
        RefusalCase{"wrong_version", "interface version", "0x2 where 0x3"},
        RefusalCase{"wrong_machine_word", "machine word", "0x401 where 0x400"},
        RefusalCase{"no_startup", "startup", "no start-up function"},
        RefusalCase{"null_token", "startup", "null token"},
        RefusalCase{"failing_startup", "startup", "no licence today"},
        RefusalCase{"no_shutdown", "shutdown", "no shut-down function"},
        RefusalCase{"no_server_list", "server list", "names no list"},
        RefusalCase{"empty_server_list", "server list", "is empty"},
        RefusalCase{"null_activation", "server list", "server 1 has no activation function"},
        RefusalCase{"null_name", "server list", "server 1 has no name"},
        RefusalCase{"null_class", "server list", "server 1 has no class"},
        RefusalCase{"server_twice", "server list",
                    "'Good' of class 'MeshDataEdit' is there twice"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(ModuleLoad, RefusesAFileThatIsNoLibrary)
{
    const auto file = std::filesystem::path(testing::TempDir()) / "plain_text.p";
    std::ofstream(file) << "not a library\n";
    EXPECT_THROW((void)Module::load(file), ModuleError);
    std::filesystem::remove(file);
}

TEST(ModuleLoad, FindsAFileNamedWithoutItsFolder)
{
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(module_file("good").parent_path());
    EXPECT_EQ(Module::load("good.p").servers().size(), 2u);
    std::filesystem::current_path(before);
}

TEST(ModuleLife, ShutsDownOnceWithTheTokenOfItsStart)
{
    session::module_events().clear();
    {
        Module first = Module::load(module_file("script"));
        EXPECT_THAT(session::module_events(), testing::ElementsAre("startup"));
        const Module moved = std::move(first);
        EXPECT_THAT(session::module_events(), testing::ElementsAre("startup"));
    }
    EXPECT_THAT(session::module_events(), testing::ElementsAre("startup", "shutdown"));
    EXPECT_NE(session::module_token("startup"), nullptr);
    EXPECT_EQ(session::module_token("shutdown"), session::module_token("startup"));
}

TEST(Run, RefusesAServerThatIsNotThereAndNamesThoseThatAre)
{
    modeler::Modeler host = session::sample_host();
    session::LoggingFrontEnd front_end;
    Module module = Module::load(module_file("good"));
    EXPECT_EQ(host.run(module, "Good", front_end).code, 0);
    try {
        host.run(module, "Bare", front_end); // there, but of another class
        FAIL() << "was run";
    } catch (const ModuleError& error) {
        EXPECT_THAT(error.what(), HasSubstr("no MeshDataEdit 'Bare'"));
        EXPECT_THAT(error.what(), HasSubstr("MeshDataEdit 'Good', Other 'Bare'"));
    }
}

TEST(EnableCondition, PolAsksForAPolygonInTheForeground)
{
    using modeler::LayerRole;
    modeler::Modeler host = session::sample_host();
    Module module = Module::load(module_file("script"));
    const modeler::Server& pol = *module.find("MeshDataEdit", "Script");
    EXPECT_TRUE(host.enabled(pol));
    host.set_role(0, LayerRole::hidden);
    EXPECT_TRUE(host.enabled(pol)) << "layer 3 is foreground too";
    host.set_role(3, LayerRole::background);
    EXPECT_FALSE(host.enabled(pol));
    host.set_role(4, LayerRole::foreground);
    EXPECT_FALSE(host.enabled(pol)) << "layer 4 has points only";
}

TEST(EnableCondition, OneThatIsNotKnownNeverDisables)
{
    const modeler::Modeler empty;
    Module module = Module::load(module_file("script"));
    EXPECT_TRUE(empty.enabled(*module.find("MeshDataEdit", "Odd")));
    EXPECT_FALSE(empty.enabled(*module.find("MeshDataEdit", "Script")));
}

} // namespace
