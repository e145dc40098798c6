// SPDX-License-Identifier: MIT
// Panels as a command describes them and as a user meets them.
#include <bit>
#include <cmath>
#include <cstring>
#include <new>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hostapi/panel.h"
#include "modeler/errors.h"
#include "tests/modeler/session.h"
#include "tests/support/mesh_compare.h"

namespace {

using modeler::ControlKind;
using modeler::ControlValue;
using modeler::FormPanel;
using modeler::ModuleError;
using session::sample_host;
using testing::ElementsAre;
using testing::HasSubstr;

enum : LWXPanelControlID {
    about = 0x10,
    count,
    linked,
    size,
    turn,
    map,
    jitter,
    clear,
    basic,
    advanced,
    tabs
};

constexpr LWXPanelControl controls[] = {
    {about, "About", "vButton"}, {count, "Count", "integer"}, {linked, "Linked", "iBoolean"},
    {size, "Size", "percent"},   {turn, "Turn", "angle"},     {map, "Map", "iPopChoice"},
    {jitter, "Jitter", "float"}, {clear, "Reset", "vButton"}, {0, nullptr, nullptr}};

constexpr LWXPanelDataDesc types[] = {
    {about, "About", "vButton"}, {count, "Count", "integer"}, {linked, "Linked", "integer"},
    {size, "Size", "float"},     {turn, "Turn", "float"},     {map, "Map", "integer"},
    {jitter, "Jitter", "float"}, {clear, "Reset", "vButton"}, {0, nullptr, nullptr}};

LWXPanelFuncs* panels = nullptr; ///< of the running command, for its button functions

LWXPanelFuncs* fetch(GlobalFunc* global)
{
    panels = static_cast<LWXPanelFuncs*>(global(LWXPANELFUNCS_GLOBAL, 0));
    return panels;
}

void reset(LWXPanelID panel, LWXPanelControlID)
{
    const int whole = 30;
    const double real = 0.1;
    panels->formSet(panel, count, &whole);
    panels->formSet(panel, size, &real);
}

const LWXPanelControlID basic_members[] = {size, count, 0};
const LWXPanelControlID advanced_members[] = {turn, map, jitter, 0};
const LWXPanelControlID tab_members[] = {basic, advanced, 0};
const LWXPanelControlID ruled[] = {size, 0};
const char* const choices[] = {"none", "Height", "Sway", nullptr};

LWXPanelHint hint_of(LWXPanelHintKind kind, LWXPanelControlID id, const char* text = nullptr,
                     const LWXPanelControlID* members = nullptr)
{
    return {kind, id, text, members, nullptr, nullptr};
}

std::vector<LWXPanelHint> good_hints()
{
    return {hint_of(XpLABEL, 0, "Sample 1.0"),
            hint_of(XpLABEL, basic, "Basic"), // before what it names
            hint_of(XpGROUP_, basic, nullptr, basic_members),
            hint_of(XpGROUP_, advanced, nullptr, advanced_members),
            hint_of(XpLABEL, advanced, "Advanced"),
            hint_of(XpTABS_, tabs, nullptr, tab_members),
            hint_of(XpDIVADD, count),
            {XpSTRLIST, map, nullptr, nullptr, choices, nullptr},
            {XpBUTNOTIFY, clear, nullptr, nullptr, nullptr, &reset},
            hint_of(XpENABLEMSG_, linked, "Sizes are linked", ruled),
            hint_of(XpEND, 0)};
}

/// Makes a panel of the tables above with these hints.
LWXPanelID make(LWXPanelFuncs* funcs, const std::vector<LWXPanelHint>& hints)
{
    const LWXPanelID panel = funcs->create(LWXP_FORM, controls);
    if (panel == nullptr)
        return nullptr;
    funcs->describe(panel, types, nullptr, nullptr);
    funcs->hint(panel, 0, hints.data());
    return panel;
}

/// Runs a command that shows the good panel to `user`; gives what post answered to `after`.
modeler::RunResult show(const std::function<bool(FormPanel&)>& user,
                        const std::function<void(LWXPanelFuncs*, LWXPanelID, int)>& after = {})
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    front_end.on_panel = user;
    return session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
        LWXPanelFuncs* const funcs = fetch(global);
        const LWXPanelID panel = make(funcs, good_hints());
        const int answer = funcs->post(panel);
        if (after)
            after(funcs, panel, answer);
        return 0;
    });
}

template <typename Call> std::string blame_of(Call call)
{
    try {
        call();
    } catch (const ModuleError& error) {
        return error.step() + ": " + error.what();
    }
    return "nothing";
}

TEST(Panel, IsTheFormThatTheCommandDescribes)
{
    bool seen = false;
    show([&](FormPanel& panel) {
        seen = true;
        const modeler::Form& form = panel.form();
        EXPECT_EQ(form.title, "Sample 1.0");
        std::vector<ControlKind> kinds;
        for (const auto& control : form.controls)
            kinds.push_back(control.kind);
        EXPECT_THAT(kinds,
                    ElementsAre(ControlKind::button, ControlKind::integer, ControlKind::boolean,
                                ControlKind::percent, ControlKind::angle, ControlKind::popup,
                                ControlKind::real, ControlKind::button));
        EXPECT_THAT(panel.find("Map")->choices, ElementsAre("none", "Height", "Sway"));
        EXPECT_TRUE(panel.find("Count")->divider_after);
        EXPECT_FALSE(panel.find("Size")->divider_after);
        EXPECT_EQ(panel.find_group(basic)->title, "Basic");
        EXPECT_THAT(panel.find_group(basic)->members, ElementsAre(size, count));
        EXPECT_EQ(panel.find_group(advanced)->title, "Advanced");
        EXPECT_THAT(form.tab_sets.at(0).groups, ElementsAre(basic, advanced));
        EXPECT_THAT(panel.outside_groups(), ElementsAre(about, linked, clear));
        EXPECT_TRUE(panel.outside_tabs().empty());
        EXPECT_EQ(panel.disabled_message(size), "Sizes are linked");
        return true;
    });
    EXPECT_TRUE(seen);
}

TEST(Panel, ValuesGoBothWaysToTheLastBit)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    const double odd = std::nextafter(0.1, 1.0);
    front_end.on_panel = [&](FormPanel& panel) {
        EXPECT_EQ(std::get<double>(panel.find(turn)->value), odd);
        EXPECT_EQ(std::get<int>(panel.find(count)->value), -7);
        EXPECT_EQ(std::get<int>(panel.find(linked)->value), 5) << "as the command set it";
        EXPECT_EQ(std::get<int>(panel.find(map)->value), 12) << "an entry that is no more";
        EXPECT_TRUE(std::isnan(std::get<double>(panel.find(jitter)->value)));
        panel.set(count, 2147483647);
        panel.set(size, std::nextafter(odd, 1.0));
        return true;
    };
    const auto result = session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
        LWXPanelFuncs* const funcs = fetch(global);
        const LWXPanelID panel = make(funcs, good_hints());
        const int numbers[] = {-7, 5, 12};
        const double nan = std::nan("");
        funcs->formSet(panel, turn, &odd);
        funcs->formSet(panel, count, &numbers[0]);
        funcs->formSet(panel, linked, &numbers[1]);
        funcs->formSet(panel, map, &numbers[2]);
        funcs->formSet(panel, jitter, &nan);
        EXPECT_EQ(funcs->post(panel), 1);
        EXPECT_EQ(*static_cast<int*>(funcs->formGet(panel, count)), 2147483647);
        EXPECT_EQ(*static_cast<double*>(funcs->formGet(panel, size)), std::nextafter(odd, 1.0));
        EXPECT_EQ(*static_cast<double*>(funcs->formGet(panel, turn)), odd);
        EXPECT_EQ(*static_cast<int*>(funcs->formGet(panel, linked)), 5);
        funcs->destroy(panel);
        return 0;
    });
    EXPECT_FALSE(result.panel_cancelled);
}

TEST(Panel, AButtonMayRefillTheControls)
{
    show([](FormPanel& panel) {
        panel.set(count, 5);
        panel.press(panel.find("Reset")->id);
        EXPECT_EQ(std::get<int>(panel.find(count)->value), 30);
        EXPECT_EQ(std::get<double>(panel.find(size)->value), 0.1);
        panel.press(panel.find("About")->id); // no function was given for it
        return true;
    });
}

TEST(Panel, ADisabledControlTellsWhyAndKeepsItsValue)
{
    show([](FormPanel& panel) {
        try {
            panel.set(size, 0.5);
            ADD_FAILURE() << "was set";
        } catch (const modeler::PanelRefusal& refusal) {
            EXPECT_STREQ(refusal.what(), "Sizes are linked");
        }
        EXPECT_EQ(std::get<double>(panel.find(size)->value), 0.0);
        panel.set(linked, 1);
        panel.set(size, 0.5);
        return true;
    });
}

TEST(Panel, CancelIsToldToTheCommandAndInTheResult)
{
    const auto cancelled = show([](FormPanel&) { return false; },
                                [](LWXPanelFuncs* funcs, LWXPanelID panel, int answer) {
                                    EXPECT_EQ(answer, 0);
                                    EXPECT_NE(funcs->formGet(panel, count), nullptr)
                                        << "a closed panel keeps its values";
                                });
    EXPECT_TRUE(cancelled.panel_cancelled);
    EXPECT_FALSE(show([](FormPanel&) { return true; }).panel_cancelled);
}

TEST(Panel, IsGoneAfterDestroy)
{
    show([](FormPanel&) { return true; },
         [](LWXPanelFuncs* funcs, LWXPanelID panel, int) {
             const int value = 3;
             funcs->destroy(panel);
             EXPECT_EQ(funcs->formGet(panel, count), nullptr);
             funcs->formSet(panel, count, &value);
             EXPECT_EQ(funcs->post(panel), 0);
             funcs->hint(panel, 0, good_hints().data());
             funcs->destroy(panel);
             EXPECT_EQ(funcs->formGet(reinterpret_cast<LWXPanelID>(0x1234), count), nullptr);
             EXPECT_EQ(funcs->post(nullptr), 0);
         });
}

TEST(Panel, MayBeDestroyedByItsOwnButton)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    front_end.on_panel = [](FormPanel& panel) {
        panel.press(clear);
        EXPECT_EQ(panel.find(count)->label, "Count") << "there as long as it is shown";
        return true;
    };
    session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
        LWXPanelFuncs* const funcs = fetch(global);
        auto hints = good_hints();
        hints[8].button = [](LWXPanelID panel, LWXPanelControlID) {
            EXPECT_EQ(panels->post(panel), 0) << "it is shown already";
            panels->destroy(panel);
            EXPECT_NE(panels->formGet(panel, count), nullptr) << "not before it is closed";
        };
        const LWXPanelID panel = make(funcs, hints);
        EXPECT_EQ(funcs->post(panel), 1);
        EXPECT_EQ(funcs->formGet(panel, count), nullptr);
        return 0;
    });
}

TEST(Panel, WrongCallsAreHarmless)
{
    show([](FormPanel&) { return true; },
         [](LWXPanelFuncs* funcs, LWXPanelID panel, int) {
             const int value = 3;
             EXPECT_EQ(funcs->formGet(panel, 0x999), nullptr);
             EXPECT_EQ(funcs->formGet(panel, clear), nullptr) << "a button has no value";
             funcs->formSet(panel, 0x999, &value);
             funcs->formSet(panel, clear, &value);
             funcs->formSet(panel, count, nullptr);
             EXPECT_EQ(*static_cast<int*>(funcs->formGet(panel, count)), 0);
         });
}

TEST(Panel, AFailingButtonEndsTheRun)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    front_end.on_panel = [](FormPanel& panel) {
        try {
            panel.press(clear);
        } catch (const std::exception&) {
            return true; // a front end that takes no notice
        }
        return true;
    };
    const auto run_with = [&](LWXPanelButtonFunc* button) {
        return blame_of([&] {
            session::run(host, front_end, [&](GlobalFunc* global, MeshEditBegin*) {
                auto hints = good_hints();
                hints[8].button = button;
                LWXPanelFuncs* const funcs = fetch(global);
                (void)funcs->post(make(funcs, hints));
                return 0;
            });
        });
    };
    EXPECT_THAT(run_with([](LWXPanelID, LWXPanelControlID) { throw std::bad_alloc(); }),
                HasSubstr("button 'Reset': the command ran out of memory"));
    EXPECT_THAT(
        run_with([](LWXPanelID, LWXPanelControlID) { throw std::runtime_error("no paint"); }),
        HasSubstr("button 'Reset': no paint"));
    EXPECT_THAT(run_with([](LWXPanelID, LWXPanelControlID) { throw 5; }),
                HasSubstr("unknown kind"));
}

TEST(Panel, AFrontEndThatFailsEndsTheRun)
{
    modeler::Modeler host = sample_host();
    session::LoggingFrontEnd front_end;
    front_end.on_panel = [](FormPanel&) -> bool { throw std::out_of_range("no screen"); };
    int answer = -1;
    EXPECT_THROW(session::run(host, front_end,
                              [&](GlobalFunc* global, MeshEditBegin*) {
                                  LWXPanelFuncs* const funcs = fetch(global);
                                  answer = funcs->post(make(funcs, good_hints()));
                                  return 0;
                              }),
                 std::out_of_range);
    EXPECT_EQ(answer, 0);
}

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
