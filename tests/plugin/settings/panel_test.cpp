// SPDX-License-Identifier: MIT
#include "plugin/host/gui_messages.h"
#include "plugin/settings/panel.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

const Lines controls = {"control 0x8001 \"About\" vButton",
                        "control 0x8002 \"Number of Clones\" integer",
                        "control 0x8006 \"Independent Sizes\" iBoolean",
                        "control 0x8003 \"Size Variations\" percent",
                        "control 0x8004 \"Y\" percent",
                        "control 0x8005 \"Z\" percent",
                        "control 0x8017 \"Size WeightMap\" iPopChoice",
                        "control 0x8018 \"Size WeightMap Influence\" percent",
                        "control 0x8007 \"Size depends on Poly Area\" iBoolean",
                        "control 0x800C \"Dependence Power\" percent",
                        "control 0x8011 \"Density WeightMap\" iPopChoice",
                        "control 0x8008 \"Random rotation H Min\" angle",
                        "control 0x8009 \"H Max\" angle",
                        "control 0x800A \"P Min\" angle",
                        "control 0x800B \"P Max\" angle",
                        "control 0x800D \"B Min\" angle",
                        "control 0x800E \"B Max\" angle",
                        "control 0x801A \"Zero Angles\" vButton",
                        "control 0x801F \"H Align with normals\" iBoolean",
                        "control 0x8020 \"P Align with normals\" iBoolean",
                        "control 0x8013 \"Jitter Cloned points\" float",
                        "control 0x8016 \"Slope Angle Limits\" iBoolean",
                        "control 0x8014 \"Min Slope Angle\" angle",
                        "control 0x8015 \"Max Slope Angle\" angle",
                        "control 0x800F \"Distribution\" percent",
                        "control 0x8010 \"Iterations\" integer",
                        "control 0x8012 \"Random Seed\" integer",
                        "control 0x801B \"Auto morph maps\" integer",
                        "control 0x8019 \"Reset Values\" vButton",
                        "control 0x8021 \"P angle weightmap\" iPopChoice",
                        "control 0x8022 \"Absolute\" iBoolean"};

const Lines data_rows = {"data 0x8001 \"About\" vButton",
                         "data 0x8002 \"Number of Clones\" integer",
                         "data 0x8006 \"Independent Sizes\" integer",
                         "data 0x8003 \"Size Variations\" float",
                         "data 0x8004 \"Y\" float",
                         "data 0x8005 \"Z\" float",
                         "data 0x8017 \"Size WeightMap\" integer",
                         "data 0x8018 \"Size WeightMap Influence\" float",
                         "data 0x8007 \"Size depends on Poly Area\" integer",
                         "data 0x800C \"Dependence Power\" float",
                         "data 0x8011 \"Density WeightMap\" integer",
                         "data 0x8008 \"Random rotation H Min\" float",
                         "data 0x8009 \"H Max\" float",
                         "data 0x800A \"P Min\" float",
                         "data 0x800B \"P Max\" float",
                         "data 0x800D \"B Min\" float",
                         "data 0x800E \"B Max\" float",
                         "data 0x801A \"Zero Angles\" vButton",
                         "data 0x801F \"H Align with normals\" integer",
                         "data 0x8020 \"P Align with normals\" integer",
                         "data 0x8013 \"Jitter Cloned points\" float",
                         "data 0x8016 \"Slope Angle Limits\" integer",
                         "data 0x8014 \"Min Slope Angle\" float",
                         "data 0x8015 \"Max Slope Angle\" float",
                         "data 0x800F \"Distribution\" float",
                         "data 0x8010 \"Iterations\" integer",
                         "data 0x8012 \"Random Seed\" integer",
                         "data 0x801B \"Auto morph maps\" integer",
                         "data 0x8019 \"Reset Values\" vButton",
                         "data 0x8021 \"P angle weightmap\" integer",
                         "data 0x8022 \"Absolute\" integer"};

const Lines hints = {
    "hint label 0x0 \"Dastrel 1.6\"",
    "hint group 0x801C 0x8002 0x8006 0x8003 0x8004 0x8005 0x8017 0x8018 0x8011 0x8008 0x8009 "
    "0x800A 0x800B 0x800D 0x800E 0x801A 0x801F 0x8020 0x8012",
    "hint label 0x801C \"Basic\"",
    "hint group 0x801D 0x8007 0x800C 0x8013 0x8016 0x8014 0x8015 0x8021 0x8022 0x800F 0x8010 "
    "0x801B",
    "hint label 0x801D \"Advanced\"",
    "hint tabs 0x801E 0x801C 0x801D",
    "hint divider 0x800C",
    "hint divider 0x8011",
    "hint divider 0x801A",
    "hint divider 0x8020",
    "hint divider 0x8013",
    "hint divider 0x8015",
    "hint divider 0x8010",
    "hint divider 0x8022",
    "hint list 0x8011 \"none\" \"Grass\"",
    "hint list 0x8017 \"none\" \"Grass\"",
    "hint list 0x8021 \"none\" \"Grass\"",
    "hint button 0x8019",
    "hint button 0x801A",
    "hint button 0x8001",
    "hint enable 0x8020 0x8021 \"P Align should be enabled.\"",
    "hint enable 0x8016 0x8015 0x8014 \"Slope Angle is Disabled\"",
    "hint enable 0x8006 0x8004 0x8005 \"Size axes are linked\"",
    "hint enable 0x8017 0x8018 \"Choose any weightmap first\"",
    "hint enable 0x8007 0x800C \"Control is disabled. Turn 'Size Depends on Poly Area' on first\""};

class Panel : public ModuleTest {
protected:
    /// Shows the panel with two map names. `record` stands for the caller's own settings.
    int show(params_typ* record = &par)
    {
        char none[] = "none";
        char grass[] = "Grass";
        char* names[] = {none, grass, nullptr};
        return display_panel(record, names);
    }
};

TEST_F(Panel, MakesItsCallsInOrderWithAllTablesAndHints)
{
    EXPECT_EQ(show(), 1);
    Lines expected = {"panel create(1)"};
    const auto append = [&expected](const Lines& lines) {
        expected.insert(expected.end(), lines.begin(), lines.end());
    };
    append(controls);
    append({"panel describe(null, null)"});
    append(data_rows);
    append({"panel hint(0)"});
    append(hints);
    append(host.calls_to("formSet"));
    append({"panel post"});
    EXPECT_EQ(host.calls, expected);
    EXPECT_EQ(host.calls_to("formSet").size(), 28U);
}

TEST_F(Panel, IsFilledFromTheModulesSettingsWhateverRecordIsPassed)
{
    params_typ other;
    other.clone_num = 999;
    par.clone_num = 12;
    EXPECT_EQ(show(&other), 1);
    EXPECT_EQ(host.panel_values[0x8002], support::PanelValue(12));
    EXPECT_EQ(show(nullptr), 1);
    EXPECT_EQ(host.panel_values[0x8002], support::PanelValue(12));
}

TEST_F(Panel, ReturnsWhatTheUserAnswered)
{
    for (const int answer : {0, 1, 2}) {
        host.user = [answer](RecordingHost&) { return answer; };
        EXPECT_EQ(show(), answer);
    }
}

TEST_F(Panel, ThatCannotBeMadeCountsAsCancelled)
{
    host.gives_panel = false;
    EXPECT_EQ(show(), 0);
    EXPECT_EQ(host.calls.size(), 1 + controls.size()) << "nothing but the attempt";
    EXPECT_EQ(xpanel, nullptr);
}

TEST_F(Panel, AboutShowsTheCreditWithItsVersionAndTheHomePage)
{
    (void)show();
    host.calls.clear();
    host.press(0x8001);
    ASSERT_EQ(host.calls.size(), 1U);
    EXPECT_EQ(host.calls[0].substr(0, 5), "info(");
    EXPECT_NE(host.calls[0].find("1.6.1\", \""), std::string::npos) << host.calls[0];
}

TEST_F(Panel, OffersNoneAloneWithoutWeightMaps)
{
    add_ground();
    add_model();
    par.clone_num = 0;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("hint list"),
              (Lines{"hint list 0x8011 \"none\"", "hint list 0x8017 \"none\"",
                     "hint list 0x8021 \"none\""}));
}

TEST_F(Panel, OffersTheScenesWeightMapsInTheHostsOrder)
{
    add_ground();
    add_model();
    host.maps.push_back({LWVMAP_WGHT, "Stone", {}});
    host.maps.push_back({LWVMAP_TXUV, "Leaf", {}});
    host.maps.push_back({LWVMAP_WGHT, "Grass", {}});
    par.clone_num = 0;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.choices, (Lines{"none", "Stone", "Grass"}));
}

} // namespace
} // namespace dastrel
