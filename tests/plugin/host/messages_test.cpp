// SPDX-License-Identifier: MIT
#include "plugin/host/gui_messages.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

class Messages : public ModuleTest {};

TEST_F(Messages, AnErrorBoxHasOneLineOrTwo)
{
    message("Change slope angle settings", "There are no valid polys to clone on.");
    message("Need some polys to clone on them", nullptr);
    EXPECT_EQ(host.calls, (Lines{"error(\"Change slope angle settings\", "
                                 "\"There are no valid polys to clone on.\")",
                                 "error(\"Need some polys to clone on them\", null)"}));
}

TEST_F(Messages, OfUnusableLayersDifferInKindAndOrder)
{
    msg_nurbs(nullptr, 0);
    msg_nurbs2(nullptr, 0);
    EXPECT_EQ(host.calls,
              (Lines{"info(\"Need some polys in background layer.\", \"NURBS not supported.\")",
                     "error(\"NURBS not supported.\", \"Need some polys in foreground layer.\")"}));
}

TEST_F(Messages, AQuestionPutsItsSecondTextInTheTitle)
{
    host.yes_no = 5;
    EXPECT_EQ(are_you_sure("text A", "text B"), 5);
    EXPECT_EQ(host.calls, Lines{"yesNo(\"text B\", \"Are You sure?\", \"text A\")"});
    host.yes_no = 0;
    EXPECT_EQ(are_you_sure("text A", "text B"), 0);
}

TEST_F(Messages, AboutEndsItsCreditWithTheVersion)
{
    msg_about(nullptr, 0);
    ASSERT_EQ(host.calls.size(), 1U);
    const std::string& call = host.calls[0];
    EXPECT_EQ(call.substr(0, 6), "info(\"");
    EXPECT_NE(call.find("the Dastrel authors"), std::string::npos);
    EXPECT_NE(call.find("1.6.1\", \""), std::string::npos) << "the first line ends in the version";
    EXPECT_EQ(call.find("null"), std::string::npos);
}

TEST_F(Messages, WithoutTheServiceNothingHappens)
{
    msg = nullptr;
    message("line", "line");
    msg_about(nullptr, 0);
    msg_nurbs(nullptr, 0);
    msg_nurbs2(nullptr, 0);
    host.yes_no = 1;
    EXPECT_EQ(are_you_sure("A", "B"), 0);
    EXPECT_EQ(host.calls, Lines{});
}

} // namespace
} // namespace dastrel
