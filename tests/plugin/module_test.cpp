// SPDX-License-Identifier: MIT
#include "tests/plugin/module_test.h"

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/LW6-face.h"
#include "plugin/host/servmain.h"
#include "tests/support/allocations.h"

namespace dastrel {

void reset_module(unsigned sampler_seed)
{
    while (pos_list != nullptr) { // whatever "Number of Clones" says by now
        pos_typ* const following = pos_list->next;
        delete pos_list;
        pos_list = following;
    }
    free_memory();
    use(params_typ());
    losoj.randomize(sampler_seed);
    HPB_rand = 0.0;
    msg = nullptr;
    objfunc = nullptr;
    xpanf = nullptr;
    xpanel = nullptr;
    monf = nullptr;
    edit = nullptr;
    num_polys = 0;
    poly_num = 0;
    data = nullptr;
    poly_avg_area = 0.0;
    akt_item = nullptr;
    akt_point = 0;
    size_change_x = size_change_y = size_change_z = 0.0;
    morph_map_num = 0;
}

params_typ still()
{
    params_typ settings;
    settings.h_min = settings.h_max = 0.0;
    settings.p_min = settings.p_max = 0.0;
    settings.b_min = settings.b_max = 0.0;
    settings.size_var_x = settings.size_var_y = settings.size_var_z = 0.0;
    settings.h_align = settings.p_align = 0;
    return settings;
}

void use(const params_typ& settings) { par = settings; }

ModuleTest::ModuleTest()
{
    reset_module();
    msg = host.messages();
    objfunc = host.objects();
    xpanf = host.panels();
    monf = host.monitors();
    edit = host.edit();
}

ModuleTest::~ModuleTest()
{
    EXPECT_EQ(host.violations, Lines{});
    reset_module();
}

int ModuleTest::run()
{
    const support::ModuleSide module_side;
    return CloneMake(1, RecordingHost::global(), RecordingHost::local(), nullptr);
}

int ModuleTest::add_ground(double x, double z)
{
    return host.add_polygon(Side::foreground,
                            {{x, 0, z}, {x + 1, 0, z}, {x + 1, 0, z + 1}, {x, 0, z + 1}});
}

int ModuleTest::add_model()
{
    return host.add_polygon(Side::background, {{1, 0, 0}, {0, 2, 0}, {0, 0, 4}});
}

void ModuleTest::scan()
{
    num_polys = edit->polyCount(edit->state, OPLYR_FG, OPCOUNT_SELECTED);
    reserve_memory(num_polys);
    data = poly_data;
    poly_num = 0;
    edit->polyScan(edit->state, polscan, &par, OPLYR_FG);
    num_polys = poly_num;
    const support::HostSide host_side;
    host.calls.clear();
}

void expect_run_state_released()
{
    EXPECT_EQ(poly_data, nullptr);
    EXPECT_EQ(pos_list, nullptr);
    EXPECT_EQ(pointID, nullptr);
    EXPECT_EQ(IDs, nullptr);
    for (const UV_typ* list : {UVs, WGs, MMs, MNs, STs})
        EXPECT_EQ(list, nullptr);
    EXPECT_EQ(WG_val, nullptr);
}

std::vector<const pos_typ*> positions()
{
    std::vector<const pos_typ*> nodes;
    for (const pos_typ* node = pos_list; node != nullptr; node = node->next)
        nodes.push_back(node);
    return nodes;
}

int draws_since(unsigned seed, const random& sampler)
{
    CRandom repeated;
    repeated.randomize(seed);
    const auto same_place = [&] {
        if (repeated.mti != sampler.mti)
            return false;
        for (int i = 0; i < 624; ++i)
            if (repeated.mt[i] != sampler.mt[i])
                return false;
        return true;
    };
    for (int draws = 0; draws < 100000; ++draws) {
        if (same_place())
            return draws;
        (void)repeated.get();
    }
    return -1;
}

std::string text(XYZ6_typ v)
{
    return "(" + support::number(v.x()) + ", " + support::number(v.y()) + ", " +
           support::number(v.z()) + ")";
}

void expect_near(XYZ6_typ actual, double x, double y, double z, double tolerance)
{
    EXPECT_NEAR(actual.x(), x, tolerance) << text(actual);
    EXPECT_NEAR(actual.y(), y, tolerance) << text(actual);
    EXPECT_NEAR(actual.z(), z, tolerance) << text(actual);
}

void expect_equal(XYZ6_typ actual, double x, double y, double z)
{
    EXPECT_TRUE(actual.x() == x && actual.y() == y && actual.z() == z)
        << text(actual) << " is not " << text({x, y, z});
}

} // namespace dastrel
