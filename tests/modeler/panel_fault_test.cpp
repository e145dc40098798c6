// SPDX-License-Identifier: MIT
// Panels that a command describes wrongly.
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/modeler/panel_sample.h"
#include "tests/modeler/session.h"

namespace {

using namespace panel_sample;

using session::sample_host;
using testing::HasSubstr;

struct BadControls {
    const char* name;
    LWXPanelControl row;
    const char* says;
};
class BadControlTable : public testing::TestWithParam<BadControls> {};

TEST_P(BadControlTable, IsReportedAndGivesNoPanel)
{
    modeler::Modeler host = sample_host();
    LWXPanelID panel = nullptr;
    const std::string blame = blame_of([&] {
        session::run(host, [&](GlobalFunc* global, MeshEditBegin*) {
            const LWXPanelControl table[] = {controls[0], GetParam().row, {0, nullptr, nullptr}};
            panel = fetch(global)->create(LWXP_FORM, table);
            return 0;
        });
    });
    EXPECT_EQ(panel, nullptr);
    EXPECT_THAT(blame, testing::StartsWith("panel: "));
    EXPECT_THAT(blame, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadControlTable,
    testing::Values(
        BadControls{"unknown_class",
                    {count, "Count", "slider"},
                    "the control 'Count' (0x11) is of the unknown class 'slider'"},
        BadControls{"no_class", {count, "Count", nullptr}, "row 2 of the controls lacks"},
        BadControls{"no_label", {count, nullptr, "integer"}, "row 2 of the controls lacks"},
        BadControls{"no_id", {0, "Count", "integer"}, "row 2 of the controls lacks"},
        BadControls{"id_twice", {about, "Count", "integer"}, "the id 0x10, which is taken"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(Panel, AMissingTableOrAnotherTypeIsReported)
{
    modeler::Modeler host = sample_host();
    const auto create = [&](int type, const LWXPanelControl* table) {
        return blame_of([&] {
            session::run(host, [&](GlobalFunc* global, MeshEditBegin*) {
                EXPECT_EQ(fetch(global)->create(type, table), nullptr);
                return 0;
            });
        });
    };
    EXPECT_THAT(create(LWXP_FORM, nullptr), HasSubstr("the table of controls is missing"));
    EXPECT_THAT(create(2, controls), HasSubstr("a panel of the type 2 is asked for"));
}

struct BadHints {
    const char* name;
    LWXPanelHint hint;
    const char* says;
};
class BadHint : public testing::TestWithParam<BadHints> {};

const LWXPanelControlID nobody[] = {0x999, 0};

TEST_P(BadHint, IsReportedAndThePanelIsNotShown)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    int answer = -1;
    const std::string blame = blame_of([&] {
        session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
            auto hints = good_hints();
            hints.back() = GetParam().hint;
            hints.push_back(hint_of(XpEND, 0));
            LWXPanelFuncs* const funcs = fetch(global);
            answer = funcs->post(make(funcs, hints));
            return 0;
        });
    });
    EXPECT_EQ(answer, 0);
    EXPECT_TRUE(front_end.log.empty());
    EXPECT_THAT(blame, testing::StartsWith("panel: "));
    EXPECT_THAT(blame, HasSubstr(GetParam().says));
}

INSTANTIATE_TEST_SUITE_P(
    Hints, BadHint,
    testing::Values(
        BadHints{"rule_by_nobody", hint_of(XpENABLEMSG_, 0x999, "Never", ruled),
                 "a rule is for the control 0x999"},
        BadHints{"label_of_nothing", hint_of(XpLABEL, 0x999, "Lost"),
                 "the label 'Lost' is for 0x999"},
        BadHints{"label_without_text", hint_of(XpLABEL, basic), "has no text"},
        BadHints{"group_without_members", hint_of(XpGROUP_, 0x50), "has no list of members"},
        BadHints{"group_of_nobody", hint_of(XpGROUP_, 0x50, nullptr, nobody), "0x999"},
        BadHints{"second_group", hint_of(XpGROUP_, 0x50, nullptr, basic_members),
                 "stands in groups twice"},
        BadHints{"group_with_a_taken_id", hint_of(XpGROUP_, count, nullptr, ruled), "is taken"},
        BadHints{"tabs_of_nobody", hint_of(XpTABS_, 0x50, nullptr, nobody), "0x999"},
        BadHints{"divider_of_nobody", hint_of(XpDIVADD, 0x999), "a divider is for the control"},
        BadHints{"list_of_a_number",
                 {XpSTRLIST, count, nullptr, nullptr, choices, nullptr},
                 "'Count', which is no popup"},
        BadHints{"list_missing", hint_of(XpSTRLIST, map), "the list of 'Map' is missing"},
        BadHints{"button_of_a_number",
                 {XpBUTNOTIFY, count, nullptr, nullptr, nullptr, &reset},
                 "'Count', which is no button"},
        BadHints{"button_missing", hint_of(XpBUTNOTIFY, about), "'About' is missing"},
        BadHints{"rule_by_a_button", hint_of(XpENABLEMSG_, about, "Never", ruled),
                 "'About', which is a button"},
        BadHints{"rule_on_nobody", hint_of(XpENABLEMSG_, linked, "Never", nobody), "0x999"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(Panel, AHintOfAnUnknownKindIsReported)
{
    modeler::Modeler host = sample_host();
    const std::string blame = blame_of([&] {
        session::run(host, [&](GlobalFunc* global, MeshEditBegin*) {
            auto hints = good_hints();
            const int unknown = 77;
            std::memcpy(&hints[0].kind, &unknown, sizeof unknown);
            (void)make(fetch(global), hints);
            return 0;
        });
    });
    EXPECT_THAT(blame, HasSubstr("of the unknown kind 77"));
}

TEST(Panel, WrongTypesAndAMissingListAreReported)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    const auto described = [&](const LWXPanelDataDesc* table, LWXPanelGetFunc* get) {
        return blame_of([&] {
            session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
                LWXPanelFuncs* const funcs = fetch(global);
                const LWXPanelID panel = funcs->create(LWXP_FORM, controls);
                funcs->describe(panel, table, get, nullptr);
                EXPECT_EQ(funcs->post(panel), 0);
                return 0;
            });
        });
    };
    const LWXPanelDataDesc wrong[] = {{size, "Size", "integer"}, {0, nullptr, nullptr}};
    const LWXPanelDataDesc lost[] = {{0x999, "Lost", "integer"}, {0, nullptr, nullptr}};
    const LWXPanelDataDesc none[] = {{size, "Size", nullptr}, {0, nullptr, nullptr}};
    EXPECT_THAT(described(wrong, nullptr), HasSubstr("'Size' is of the class 'percent', whose "
                                                     "values are 'float', not 'integer'"));
    EXPECT_THAT(described(lost, nullptr), HasSubstr("0x999"));
    EXPECT_THAT(described(none, nullptr), HasSubstr("not ''"));
    EXPECT_THAT(described(nullptr, nullptr), HasSubstr("the table of data types is missing"));
    EXPECT_THAT(described(types, [](void*, LWXPanelControlID) -> void* { return nullptr; }),
                HasSubstr("takes no value functions"));
    EXPECT_THAT(described(types, nullptr), HasSubstr("the popup 'Map' has no list"));
    EXPECT_TRUE(front_end.log.empty());
}

} // namespace
