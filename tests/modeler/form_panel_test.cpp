// SPDX-License-Identifier: MIT
#include "modeler/form_panel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "modeler/errors.h"

namespace {

using modeler::Control;
using modeler::ControlKind;
using modeler::ControlValue;
using modeler::Form;
using modeler::FormPanel;
using modeler::PanelRefusal;
using testing::ElementsAre;

Control control(modeler::ControlId id, const char* label, ControlKind kind, ControlValue value)
{
    Control made;
    made.id = id;
    made.label = label;
    made.kind = kind;
    made.value = value;
    return made;
}

/// A switch 1 rules the percent 2 and the button 6; a popup 3 rules the percent 2 too.
Form sample_form()
{
    Form form;
    form.controls = {control(1, "Independent", ControlKind::boolean, 0),
                     control(2, "Size", ControlKind::percent, 0.1),
                     control(3, "Map", ControlKind::popup, 0),
                     control(4, "Count", ControlKind::integer, 30),
                     control(5, "Turn", ControlKind::angle, 0.5),
                     control(6, "Clear", ControlKind::button, {}),
                     control(7, "Size", ControlKind::real, 1.0)};
    form.controls[2].choices = {"none", "Height"};
    form.groups = {{20, "First", {2, 1}}, {21, "Second", {3}}, {22, "Alone", {4}}};
    form.tab_sets = {{30, "", {20, 21}}};
    form.rules = {{1, {2, 6}, "Sizes are linked"}, {3, {2}, "Choose a map first"}};
    return form;
}

template <typename Call> std::string refusal(Call call)
{
    try {
        call();
    } catch (const PanelRefusal& refused) {
        return refused.what();
    }
    return "was done";
}

TEST(FormPanel, FindsControlsByIdAndByTheFirstLabel)
{
    Form form = sample_form();
    const FormPanel panel(form);
    EXPECT_EQ(panel.find(4)->label, "Count");
    EXPECT_EQ(panel.find("Size")->id, 2u);
    EXPECT_EQ(panel.find("size"), nullptr);
    EXPECT_EQ(panel.find(99), nullptr);
    EXPECT_EQ(panel.find_group(21)->title, "Second");
    EXPECT_EQ(panel.find_group(1), nullptr);
}

TEST(FormPanel, TellsWhatStandsOutsideGroupsAndTabs)
{
    Form form = sample_form();
    const FormPanel panel(form);
    EXPECT_THAT(panel.outside_groups(), ElementsAre(5u, 6u, 7u));
    EXPECT_THAT(panel.outside_tabs(), ElementsAre(22u));
}

TEST(FormPanel, AControlIsUsableWhileAllItsRulesHold)
{
    Form form = sample_form();
    FormPanel panel(form);
    EXPECT_FALSE(panel.enabled(2));
    EXPECT_EQ(panel.disabled_message(2), "Sizes are linked");
    EXPECT_EQ(refusal([&] { panel.set(2, 0.5); }), "Sizes are linked");
    panel.set(1, 1);
    EXPECT_EQ(panel.disabled_message(2), "Choose a map first");
    panel.set(3, 1);
    EXPECT_TRUE(panel.enabled(2));
    EXPECT_EQ(panel.disabled_message(2), "");
    panel.set(2, 0.5);
    EXPECT_EQ(panel.find(2)->value, ControlValue(0.5));
    EXPECT_TRUE(panel.enabled(4)) << "no rule names it";
}

TEST(FormPanel, AnyValueButZeroEnables)
{
    Form form = sample_form();
    form.rules = {{5, {4}, "Turn first"}};
    FormPanel panel(form);
    EXPECT_TRUE(panel.enabled(4));
    panel.set(5, -0.0);
    EXPECT_FALSE(panel.enabled(4));
    panel.set(5, 1e-300);
    EXPECT_TRUE(panel.enabled(4));
    form.controls[0].value = -3; // a module may set what a user cannot
    form.rules = {{1, {4}, ""}};
    EXPECT_TRUE(panel.enabled(4));
}

TEST(FormPanel, FillingPassesOverTheRules)
{
    Form form = sample_form();
    FormPanel panel(form);
    panel.fill(2, 0.75);
    EXPECT_EQ(panel.find(2)->value, ControlValue(0.75));
}

TEST(FormPanel, TakesValuesOfTheControlsKindOnly)
{
    Form form = sample_form();
    FormPanel panel(form);
    EXPECT_EQ(refusal([&] { panel.fill(4, 1.5); }), "'Count' takes a whole number");
    EXPECT_EQ(refusal([&] { panel.fill(4, {}); }), "'Count' takes a whole number");
    EXPECT_EQ(panel.find(4)->value, ControlValue(30)) << "the old value stays";
    EXPECT_EQ(refusal([&] { panel.fill(5, {}); }), "'Turn' takes a number");
    EXPECT_EQ(refusal([&] { panel.fill(1, 2); }),
              "'Independent' is a switch: 0 is off and 1 is on, not 2");
    EXPECT_EQ(refusal([&] { panel.fill(3, 2); }),
              "'Map' has 2 entries, counted from 0; there is no entry 2");
    EXPECT_EQ(refusal([&] { panel.fill(3, -1); }),
              "'Map' has 2 entries, counted from 0; there is no entry -1");
    EXPECT_EQ(refusal([&] { panel.fill(6, 1); }), "'Clear' is a button and has no value");
    EXPECT_EQ(refusal([&] { panel.fill(99, 1); }), "the panel has no control 0x63");
    panel.fill(5, 2);
    EXPECT_EQ(panel.find(5)->value, ControlValue(2.0)) << "a whole number is a number";
}

TEST(FormPanel, PressesButtonsThatAreEnabled)
{
    Form form = sample_form();
    int pressed = 0;
    form.controls[5].action = [&] { ++pressed; };
    FormPanel panel(form);
    EXPECT_EQ(refusal([&] { panel.press(6); }), "Sizes are linked");
    EXPECT_EQ(pressed, 0);
    panel.set(1, 1);
    panel.press(6);
    EXPECT_EQ(pressed, 1);
    EXPECT_EQ(refusal([&] { panel.press(4); }), "'Count' is not a button");
    EXPECT_EQ(refusal([&] { panel.press(99); }), "the panel has no control 0x63");
    form.controls[5].action = nullptr;
    EXPECT_NO_THROW(panel.press(6));
}

} // namespace
