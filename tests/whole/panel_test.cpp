// SPDX-License-Identifier: MIT
// The real module's panel as a user meets it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "modeler/errors.h"
#include "modeler/modeler.h"
#include "tests/whole/scenes.h"
#include "tests/whole/user.h"

namespace whole {
namespace {

using Lines = std::vector<std::string>;
using modeler::ControlKind;
using modeler::FormPanel;

class PanelOfTheModule : public testing::Test {
protected:
    PanelOfTheModule() : module_(modeler::Module::load(DASTREL_MODULE_FILE))
    {
        Numbers numbers(77);
        Session session = make_session(Ground::terrain, Model::tree, numbers);
        modeler_.replace(std::move(session.document), std::move(session.roles));
    }

    /// Runs the command and lets the user do this in its panel; Cancel when it returns false.
    template <typename Actions> modeler::RunResult in_panel(Actions actions)
    {
        bool shown = false;
        user_.in_panel = [&](FormPanel& panel) {
            shown = true;
            return actions(panel);
        };
        const modeler::RunResult result = modeler_.run(module_, "Dastrel", user_);
        EXPECT_TRUE(shown);
        return result;
    }

    /// What the panel shows at the start of the next run.
    literal::Settings next_settings()
    {
        (void)in_panel([](FormPanel&) { return false; });
        return *user_.before;
    }

    static Lines labels(const FormPanel& panel, const std::vector<modeler::ControlId>& ids)
    {
        Lines labels;
        for (const modeler::ControlId id : ids) {
            const modeler::Control* const control = panel.find(id);
            labels.push_back(control == nullptr ? "?" : control->label);
            if (control != nullptr && control->divider_after)
                labels.emplace_back("---");
        }
        return labels;
    }

    User user_;
    modeler::Modeler modeler_;
    modeler::Module module_;
};

TEST_F(PanelOfTheModule, IsForOneServerThatNeedsPolygons)
{
    ASSERT_EQ(module_.servers().size(), 1U);
    const modeler::Server& server = module_.servers()[0];
    EXPECT_EQ(server.class_name, "MeshDataEdit");
    EXPECT_EQ(server.name, "Dastrel");
    EXPECT_EQ(server.user_name, "Dastrel");
    EXPECT_EQ(server.button_name, "Dastrel");
    EXPECT_EQ(server.enable_condition, "pol");
    EXPECT_TRUE(modeler_.enabled(server));
    modeler_.set_role(0, modeler::LayerRole::hidden);
    EXPECT_FALSE(modeler_.enabled(server));
}

TEST_F(PanelOfTheModule, HasItsControlsInOrderEachOfItsKind)
{
    (void)in_panel([](FormPanel& panel) {
        EXPECT_EQ(panel.form().title, "Dastrel 1.6");
        const std::vector<std::pair<std::string, ControlKind>> expected = {
            {"About", ControlKind::button},
            {"Number of Clones", ControlKind::integer},
            {"Independent Sizes", ControlKind::boolean},
            {"Size Variations", ControlKind::percent},
            {"Y", ControlKind::percent},
            {"Z", ControlKind::percent},
            {"Size WeightMap", ControlKind::popup},
            {"Size WeightMap Influence", ControlKind::percent},
            {"Size depends on Poly Area", ControlKind::boolean},
            {"Dependence Power", ControlKind::percent},
            {"Density WeightMap", ControlKind::popup},
            {"Random rotation H Min", ControlKind::angle},
            {"H Max", ControlKind::angle},
            {"P Min", ControlKind::angle},
            {"P Max", ControlKind::angle},
            {"B Min", ControlKind::angle},
            {"B Max", ControlKind::angle},
            {"Zero Angles", ControlKind::button},
            {"H Align with normals", ControlKind::boolean},
            {"P Align with normals", ControlKind::boolean},
            {"Jitter Cloned points", ControlKind::real},
            {"Slope Angle Limits", ControlKind::boolean},
            {"Min Slope Angle", ControlKind::angle},
            {"Max Slope Angle", ControlKind::angle},
            {"Distribution", ControlKind::percent},
            {"Iterations", ControlKind::integer},
            {"Random Seed", ControlKind::integer},
            {"Auto morph maps", ControlKind::integer},
            {"Reset Values", ControlKind::button},
            {"P angle weightmap", ControlKind::popup},
            {"Absolute", ControlKind::boolean}};
        EXPECT_EQ(panel.form().controls.size(), 31U);
        for (std::size_t i = 0; i < expected.size() && i < panel.form().controls.size(); ++i) {
            EXPECT_EQ(panel.form().controls[i].label, expected[i].first);
            EXPECT_EQ(panel.form().controls[i].kind, expected[i].second) << expected[i].first;
        }
        return false;
    });
}

TEST_F(PanelOfTheModule, HasTwoTabsWithDividersAndTwoButtonsOutside)
{
    (void)in_panel([](FormPanel& panel) {
        EXPECT_EQ(labels(panel, panel.outside_groups()), (Lines{"About", "Reset Values"}));
        EXPECT_TRUE(panel.outside_tabs().empty());
        EXPECT_EQ(panel.form().tab_sets.size(), 1U);
        const auto& groups = panel.form().tab_sets.at(0).groups;
        EXPECT_EQ(groups.size(), 2U);
        const modeler::ControlGroup& basic = *panel.find_group(groups.at(0));
        const modeler::ControlGroup& advanced = *panel.find_group(groups.at(1));
        EXPECT_EQ(basic.title, "Basic");
        EXPECT_EQ(labels(panel, basic.members), (Lines{"Number of Clones",
                                                       "Independent Sizes",
                                                       "Size Variations",
                                                       "Y",
                                                       "Z",
                                                       "Size WeightMap",
                                                       "Size WeightMap Influence",
                                                       "Density WeightMap",
                                                       "---",
                                                       "Random rotation H Min",
                                                       "H Max",
                                                       "P Min",
                                                       "P Max",
                                                       "B Min",
                                                       "B Max",
                                                       "Zero Angles",
                                                       "---",
                                                       "H Align with normals",
                                                       "P Align with normals",
                                                       "---",
                                                       "Random Seed"}));
        EXPECT_EQ(advanced.title, "Advanced");
        EXPECT_EQ(labels(panel, advanced.members),
                  (Lines{"Size depends on Poly Area", "Dependence Power", "---",
                         "Jitter Cloned points", "---", "Slope Angle Limits", "Min Slope Angle",
                         "Max Slope Angle", "---", "P angle weightmap", "Absolute", "---",
                         "Distribution", "Iterations", "---", "Auto morph maps"}));
        return false;
    });
}

TEST_F(PanelOfTheModule, ShowsTheDefaultsAfterLoading)
{
    EXPECT_EQ(next_settings(), literal::Settings());
}

TEST_F(PanelOfTheModule, OffersTheWeightMapsOfGroundThenModel)
{
    (void)in_panel([](FormPanel& panel) {
        for (const char* label : {"Size WeightMap", "Density WeightMap", "P angle weightmap"}) {
            Lines choices = panel.find(label)->choices;
            if (choices.back() == "DT_index") // the tree may bring one along
                choices.pop_back();
            EXPECT_EQ(choices, (Lines{"none", "Grass", "Stone", "Nowhere", "Strong", "Sway"}));
        }
        return false;
    });
}

TEST_F(PanelOfTheModule, OffersNoneAloneWithoutWeightMaps)
{
    Numbers numbers(1);
    Session session = make_session(Ground::terrain, Model::triangle, numbers);
    session.document.layers[0].maps.clear();
    modeler_.replace(std::move(session.document), std::move(session.roles));
    (void)in_panel([](FormPanel& panel) {
        for (const char* label : {"Size WeightMap", "Density WeightMap", "P angle weightmap"})
            EXPECT_EQ(panel.find(label)->choices, Lines{"none"});
        return false;
    });
}

/// Tries a disabled control: nothing changes, and the user is told why.
void expect_disabled(FormPanel& panel, const char* label, const char* message)
{
    const modeler::ControlId id = id_of(panel, label);
    EXPECT_FALSE(panel.enabled(id)) << label;
    EXPECT_EQ(panel.disabled_message(id), message);
    const modeler::ControlValue before = panel.find(id)->value;
    try {
        panel.set(id, 1);
        ADD_FAILURE() << label << " took a value";
    } catch (const modeler::PanelRefusal& refusal) {
        EXPECT_STREQ(refusal.what(), message);
    }
    EXPECT_EQ(panel.find(id)->value, before) << label;
}

TEST_F(PanelOfTheModule, TellsWhyAControlIsDisabled)
{
    (void)in_panel([](FormPanel& panel) {
        expect_disabled(panel, "Min Slope Angle", "Slope Angle is Disabled");
        expect_disabled(panel, "Max Slope Angle", "Slope Angle is Disabled");
        expect_disabled(panel, "Y", "Size axes are linked");
        expect_disabled(panel, "Z", "Size axes are linked");
        expect_disabled(panel, "Size WeightMap Influence", "Choose any weightmap first");
        expect_disabled(panel, "Dependence Power",
                        "Control is disabled. Turn 'Size Depends on Poly Area' on first");
        EXPECT_TRUE(panel.enabled(id_of(panel, "P angle weightmap")));
        panel.set(id_of(panel, "P Align with normals"), 0);
        expect_disabled(panel, "P angle weightmap", "P Align should be enabled.");
        EXPECT_TRUE(panel.enabled(id_of(panel, "Absolute"))) << "it stays usable";
        return false;
    });
}

TEST_F(PanelOfTheModule, EnablesWhatItsSwitchesAllow)
{
    (void)in_panel([](FormPanel& panel) {
        panel.set(id_of(panel, "Slope Angle Limits"), 1);
        panel.set(id_of(panel, "Min Slope Angle"), 0.25);
        panel.set(id_of(panel, "Independent Sizes"), 1);
        panel.set(id_of(panel, "Y"), 0.5);
        panel.set(id_of(panel, "Size WeightMap"), 1);
        panel.set(id_of(panel, "Size WeightMap Influence"), 0.75);
        panel.set(id_of(panel, "Size depends on Poly Area"), 1);
        panel.set(id_of(panel, "Dependence Power"), 2.0);
        const literal::Settings shown = shown_settings(panel);
        EXPECT_EQ(shown.slope_min, 0.25);
        EXPECT_EQ(shown.size_var_y, 0.5);
        EXPECT_EQ(shown.size_wg_influence, 0.75);
        EXPECT_EQ(shown.dep_power, 2.0);
        panel.set(id_of(panel, "Size WeightMap"), 0);
        EXPECT_FALSE(panel.enabled(id_of(panel, "Size WeightMap Influence")));
        return false;
    });
}

TEST_F(PanelOfTheModule, AboutTellsTheVersion)
{
    (void)in_panel([](FormPanel& panel) {
        panel.press(id_of(panel, "About"));
        return false;
    });
    ASSERT_EQ(user_.informed.size(), 1U);
    EXPECT_NE(user_.informed[0].find("1.6.1\n"), std::string::npos) << user_.informed[0];
}

TEST_F(PanelOfTheModule, ZeroAnglesZeroesTheSixLimitsAlone)
{
    (void)in_panel([](FormPanel& panel) {
        literal::Settings expected = shown_settings(panel);
        expected.h_min = expected.h_max = 0.0;
        expected.p_min = expected.p_max = 0.0;
        expected.b_min = expected.b_max = 0.0;
        panel.press(id_of(panel, "Zero Angles"));
        EXPECT_EQ(shown_settings(panel), expected);
        return false;
    });
    EXPECT_EQ(next_settings(), literal::Settings()) << "cancelled";
}

TEST_F(PanelOfTheModule, ResetValuesRefillsEveryControl)
{
    (void)in_panel([](FormPanel& panel) {
        literal::Settings changed;
        changed.clone_num = 2;
        changed.slope_max = 1.0;
        changed.p_angle_wg = 1;
        changed.auto_morph_maps = 3;
        fill(panel, changed);
        EXPECT_EQ(shown_settings(panel), changed);
        panel.press(id_of(panel, "Reset Values"));
        EXPECT_EQ(shown_settings(panel), literal::Settings());
        return false;
    });
    EXPECT_TRUE(user_.informed.empty() && user_.warned.empty()) << "it asks nothing";
}

TEST_F(PanelOfTheModule, ResetThenCancelKeepsTheSettings)
{
    literal::Settings changed;
    changed.clone_num = 2;
    changed.jitter = 0.125;
    (void)in_panel([&](FormPanel& panel) {
        fill(panel, changed);
        return true;
    });
    EXPECT_EQ(next_settings(), changed);
    (void)in_panel([](FormPanel& panel) {
        panel.press(id_of(panel, "Reset Values"));
        return false;
    });
    EXPECT_EQ(next_settings(), changed);
    (void)in_panel([](FormPanel& panel) {
        panel.press(id_of(panel, "Reset Values"));
        panel.set(id_of(panel, "Number of Clones"), 1);
        return true;
    });
    literal::Settings reset;
    reset.clone_num = 1;
    EXPECT_EQ(next_settings(), reset);
}

TEST_F(PanelOfTheModule, CancelLeavesMeshAndSettingsAlone)
{
    const std::size_t points = modeler_.document().layers[0].points.size();
    const modeler::RunResult result = in_panel([](FormPanel& panel) {
        panel.set(id_of(panel, "Number of Clones"), 500);
        return false;
    });
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.panel_cancelled);
    EXPECT_FALSE(result.applied);
    EXPECT_EQ(modeler_.document().layers[0].points.size(), points);
    EXPECT_FALSE(modeler_.can_undo());
    EXPECT_EQ(next_settings(), literal::Settings());
    EXPECT_TRUE(user_.progress.empty());
}

TEST_F(PanelOfTheModule, OkShowsTwoProgressDisplaysAndHearsNoWishToStop)
{
    const modeler::RunResult result = in_panel([](FormPanel& panel) {
        panel.set(id_of(panel, "Number of Clones"), 2);
        return true;
    });
    EXPECT_TRUE(result.applied);
    EXPECT_EQ(user_.progress, (Lines{"Please wait: Randomising positions...", "start 2", "step 1",
                                     "step 1", "finish", "Hello: Randomising positions...",
                                     "start 2", "step 1", "step 1", "finish"}));
}

} // namespace
} // namespace whole
