// SPDX-License-Identifier: MIT
// Panels as a command describes them and as a user meets them.
#include <cmath>
#include <new>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/modeler/panel_sample.h"
#include "tests/modeler/session.h"

namespace {

using namespace panel_sample;

using modeler::ControlKind;
using modeler::FormPanel;
using session::sample_host;
using testing::ElementsAre;
using testing::HasSubstr;

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

} // namespace
