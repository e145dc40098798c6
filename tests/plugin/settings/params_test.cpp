// SPDX-License-Identifier: MIT
#include <type_traits>

#include "plugin/settings/panel.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// Every setting at a value of its own.
params_typ distinct()
{
    params_typ s;
    s.clone_num = 101;
    s.size_var_x = 0.103;
    s.size_var_y = 0.104;
    s.size_var_z = 0.105;
    s.size_indep = 106;
    s.size_poly_area = 107;
    s.h_min = 0.108;
    s.h_max = 0.109;
    s.p_max = 0.11;
    s.p_min = 0.111;
    s.b_max = 0.112;
    s.b_min = 0.113;
    s.distribution = 0.114;
    s.iterations = 115;
    s.h_align = 116;
    s.p_align = 117;
    s.density_wg = 118;
    s.seed = 119;
    s.jitter = 0.12;
    s.slope_limits = 121;
    s.slope_min = 0.122;
    s.slope_max = 0.123;
    s.size_wg = 124;
    s.size_wg_influence = 0.125;
    s.dep_power = 0.126;
    s.auto_morph_maps = 127;
    s.p_angle_wg = 128;
    s.p_absolute = 129;
    return s;
}

const Lines set_distinct = {
    "formSet(0x8002, 101)",   "formSet(0x8003, 0.103)", "formSet(0x8004, 0.104)",
    "formSet(0x8005, 0.105)", "formSet(0x8006, 106)",   "formSet(0x8007, 107)",
    "formSet(0x8008, 0.108)", "formSet(0x8009, 0.109)", "formSet(0x800B, 0.11)",
    "formSet(0x800A, 0.111)", "formSet(0x800E, 0.112)", "formSet(0x800D, 0.113)",
    "formSet(0x800F, 0.114)", "formSet(0x8010, 115)",   "formSet(0x801F, 116)",
    "formSet(0x8020, 117)",   "formSet(0x8011, 118)",   "formSet(0x8012, 119)",
    "formSet(0x8013, 0.12)",  "formSet(0x8016, 121)",   "formSet(0x8014, 0.122)",
    "formSet(0x8015, 0.123)", "formSet(0x8017, 124)",   "formSet(0x8018, 0.125)",
    "formSet(0x800C, 0.126)", "formSet(0x801B, 127)",   "formSet(0x8021, 128)",
    "formSet(0x8022, 129)"};

const Lines get_all = {"formGet(0x8002)", "formGet(0x8003)", "formGet(0x8004)", "formGet(0x8005)",
                       "formGet(0x8006)", "formGet(0x8007)", "formGet(0x8008)", "formGet(0x8009)",
                       "formGet(0x800B)", "formGet(0x800A)", "formGet(0x800E)", "formGet(0x800D)",
                       "formGet(0x800F)", "formGet(0x8010)", "formGet(0x801F)", "formGet(0x8020)",
                       "formGet(0x8011)", "formGet(0x8012)", "formGet(0x8013)", "formGet(0x8016)",
                       "formGet(0x8014)", "formGet(0x8015)", "formGet(0x8017)", "formGet(0x8018)",
                       "formGet(0x800C)", "formGet(0x801B)", "formGet(0x8021)", "formGet(0x8022)"};

const Lines set_defaults = {"formSet(0x8002, 30)",
                            "formSet(0x8003, 0.25)",
                            "formSet(0x8004, 0.25)",
                            "formSet(0x8005, 0.25)",
                            "formSet(0x8006, 0)",
                            "formSet(0x8007, 0)",
                            "formSet(0x8008, -0.17452777777777778)",
                            "formSet(0x8009, 0.17452777777777778)",
                            "formSet(0x800B, 0.17452777777777778)",
                            "formSet(0x800A, -0.17452777777777778)",
                            "formSet(0x800E, 0.17452777777777778)",
                            "formSet(0x800D, -0.17452777777777778)",
                            "formSet(0x800F, 0.8)",
                            "formSet(0x8010, 15)",
                            "formSet(0x801F, 1)",
                            "formSet(0x8020, 1)",
                            "formSet(0x8011, 0)",
                            "formSet(0x8012, 25)",
                            "formSet(0x8013, 0)",
                            "formSet(0x8016, 0)",
                            "formSet(0x8014, 0)",
                            "formSet(0x8015, 3.1415)",
                            "formSet(0x8017, 0)",
                            "formSet(0x8018, 0.5)",
                            "formSet(0x800C, 0.5)",
                            "formSet(0x801B, 0)",
                            "formSet(0x8021, 0)",
                            "formSet(0x8022, 0)"};

class Params : public ModuleTest {
protected:
    /// An open panel filled from `par`.
    void open()
    {
        char none[] = "none";
        char* const names[] = {none, nullptr};
        (void)display_panel(&par, const_cast<char**>(names));
        host.calls.clear();
    }
};

TEST_F(Params, AfterLoadingAreTheDefaults)
{
    const params_typ fresh;
    EXPECT_EQ(fresh.clone_num, 30);
    EXPECT_EQ(fresh.size_var_x, 0.25);
    EXPECT_EQ(fresh.size_var_y, 0.25);
    EXPECT_EQ(fresh.size_var_z, 0.25);
    EXPECT_EQ(fresh.size_indep, 0);
    EXPECT_EQ(fresh.size_poly_area, 0);
    EXPECT_EQ(fresh.dep_power, 0.5);
    EXPECT_EQ(fresh.size_wg, 0);
    EXPECT_EQ(fresh.size_wg_influence, 0.5);
    EXPECT_EQ(fresh.slope_limits, 0);
    EXPECT_EQ(fresh.slope_min, 0.0);
    EXPECT_EQ(fresh.slope_max, 3.1415);
    EXPECT_EQ(fresh.jitter, 0.0);
    EXPECT_EQ(fresh.distribution, 0.8);
    EXPECT_EQ(fresh.iterations, 15);
    EXPECT_EQ(fresh.seed, 25);
    EXPECT_EQ(fresh.h_align, 1);
    EXPECT_EQ(fresh.p_align, 1);
    for (const double limit : {fresh.h_max, fresh.p_max, fresh.b_max})
        EXPECT_EQ(limit, 0.17452777777777778);
    for (const double limit : {fresh.h_min, fresh.p_min, fresh.b_min})
        EXPECT_EQ(limit, -0.17452777777777778);
    EXPECT_EQ(fresh.density_wg, 0);
    EXPECT_EQ(fresh.p_angle_wg, 0);
    EXPECT_EQ(fresh.p_absolute, 0);
    EXPECT_EQ(fresh.auto_morph_maps, 0);
    static_assert(std::has_virtual_destructor_v<params_typ>);
}

TEST_F(Params, FillThePanelControlByControlInTheirOrder)
{
    open();
    params_typ settings = distinct();
    set_params(&settings);
    EXPECT_EQ(host.calls, set_distinct);
}

TEST_F(Params, AreReadBackInTheSameOrderAndToTheLastBit)
{
    open();
    params_typ written = distinct();
    set_params(&written);
    host.calls.clear();
    params_typ read;
    read.akt_clone = 77;
    get_params(&read);
    EXPECT_EQ(host.calls, get_all);
    EXPECT_EQ(read.akt_clone, 77) << "the clone's index is no setting";
    host.calls.clear();
    set_params(&read);
    EXPECT_EQ(host.calls, set_distinct);
}

TEST_F(Params, AreNeitherCheckedNorClamped)
{
    open();
    host.panel_values[0x8002] = -5;
    host.panel_values[0x8003] = 12.5;
    host.panel_values[0x8008] = 9.0;
    host.panel_values[0x8009] = -9.0;
    host.panel_values[0x8016] = 2;
    host.panel_values[0x8017] = 99;
    get_params(&par);
    EXPECT_EQ(par.clone_num, -5);
    EXPECT_EQ(par.size_var_x, 12.5);
    EXPECT_EQ(par.h_min, 9.0);
    EXPECT_EQ(par.h_max, -9.0);
    EXPECT_EQ(par.slope_limits, 2);
    EXPECT_EQ(par.size_wg, 99);
}

TEST_F(Params, ResetValuesFillsThePanelWithTheDefaultsAndAsksNothing)
{
    use(distinct());
    open();
    host.press(0x8019);
    EXPECT_EQ(host.calls, set_defaults);
    EXPECT_EQ(par.clone_num, 101) << "the settings change on OK only";
}

TEST_F(Params, ZeroAnglesZeroesTheSixRotationLimitsInTheirOrder)
{
    use(distinct());
    open();
    const auto before = host.panel_values;
    host.press(0x801A);
    EXPECT_EQ(host.calls,
              (Lines{"formSet(0x8008, 0)", "formSet(0x8009, 0)", "formSet(0x800B, 0)",
                     "formSet(0x800A, 0)", "formSet(0x800E, 0)", "formSet(0x800D, 0)"}));
    for (const auto& [id, value] : before) {
        const bool angle = (id >= 0x8008 && id <= 0x800B) || id == 0x800D || id == 0x800E;
        EXPECT_EQ(host.panel_values[id], angle ? support::PanelValue(0.0) : value)
            << support::hex(id);
    }
    EXPECT_EQ(par.h_min, 0.108);
}

TEST_F(Params, ButtonsIgnoreThePanelAndControlTheyAreGiven)
{
    open();
    defaults(nullptr, 0);
    EXPECT_EQ(host.calls, set_defaults);
    host.calls.clear();
    zero_angles(nullptr, 12345);
    EXPECT_EQ(host.calls.size(), 6U);
}

class ParamsInARun : public Params {
protected:
    ParamsInARun()
    {
        add_ground();
        add_model();
        use(still());
        par.clone_num = 1;
    }
};

TEST_F(ParamsInARun, OfARunAreTheStartOfTheNext)
{
    host.user = [](RecordingHost& h) {
        h.panel_values[0x8002] = 2;
        h.panel_values[0x800F] = 0.3;
        return 1;
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(par.clone_num, 2);
    EXPECT_EQ(par.distribution, 0.3);
    host.forget();
    host.user = nullptr;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("formSet(0x8002"), Lines{"formSet(0x8002, 2)"});
    EXPECT_EQ(host.calls_to("formSet(0x800F"), Lines{"formSet(0x800F, 0.3)"});
    EXPECT_EQ(host.added_polygons.size(), 2U);
}

TEST_F(ParamsInARun, StayAsTheyWereOnCancel)
{
    use(distinct());
    for (const LWXPanelControlID button : {0x8019U, 0x801AU}) {
        host.forget();
        host.user = [button](RecordingHost& h) {
            h.panel_values[0x8002] = 999;
            h.press(button);
            return 0;
        };
        EXPECT_EQ(run(), 0);
    }
    host.forget();
    host.user = [](RecordingHost&) { return 0; };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(host.calls_to("formSet"), set_distinct);
}

TEST_F(ParamsInARun, TakeTheDefaultsAfterResetAndOk)
{
    par.clone_num = 7;
    host.user = [](RecordingHost& h) {
        h.press(0x8019);
        h.panel_values[0x8002] = 0;
        return 1;
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(par.h_max, 0.17452777777777778);
    EXPECT_EQ(par.p_align, 1);
    EXPECT_EQ(par.clone_num, 0);
}

} // namespace
} // namespace dastrel
