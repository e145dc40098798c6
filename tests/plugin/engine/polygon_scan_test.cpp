// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>

#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "plugin/geometry/LW6-face.h"
#include "tests/plugin/module_test.h"
#include "tests/support/allocations.h"

namespace dastrel {
namespace {

constexpr double pi = 3.141592653589793;
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class PolygonScan : public ModuleTest {
protected:
    /// A square whose normal the host gives as this.
    int add_facing(double x, double y, double z)
    {
        const int polygon = add_ground();
        at(polygon).normal = {x, y, z};
        return polygon;
    }

    support::HostPolygon& at(int polygon)
    {
        return host.polygons[static_cast<std::size_t>(polygon)];
    }

    void limit_slopes(double min, double max)
    {
        par.slope_limits = 1;
        par.slope_min = min;
        par.slope_max = max;
    }

    /// The polygons that the scan records, as their indices.
    std::vector<int> recorded()
    {
        scan();
        std::vector<int> polygons;
        for (int record = 0; record < num_polys; ++record)
            for (int i = 0; i < static_cast<int>(host.polygons.size()); ++i)
                if (poly_data[record].polID == RecordingHost::polygon_id(i))
                    polygons.push_back(i);
        return polygons;
    }
};

using Indices = std::vector<int>;

TEST_F(PolygonScan, SelectedPolygonsThatAreNoFacesAreCountedOff)
{
    num_polys = 10;
    const int face = add_ground();
    const int patch = add_ground();
    const int curve = add_ground();
    const int unselected_patch = add_ground();
    at(patch).type = LWPOLTYPE_PTCH;
    at(curve).type = LWPOLTYPE_CURV;
    at(unselected_patch).type = LWPOLTYPE_PTCH;
    at(unselected_patch).selected = false;
    for (const int polygon : {face, patch, curve, unselected_patch})
        EXPECT_EQ(check_for_nurbs(nullptr, host.info(polygon)), 0);
    EXPECT_EQ(num_polys, 8);
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(PolygonScan, UnselectedPolygonsAndOtherTypesAreNeverRecorded)
{
    add_ground();
    at(add_ground()).selected = false;
    at(add_ground()).type = LWPOLTYPE_PTCH;
    at(add_ground()).type = LWPOLTYPE_CURV;
    at(add_ground()).type = LWID_PACK('M', 'B', 'A', 'L');
    add_ground();
    EXPECT_EQ(recorded(), (Indices{0, 5}));
}

TEST_F(PolygonScan, RecordsTheIdTheNormalAndThePointsInOrder)
{
    add_model();
    const int polygon =
        host.add_polygon(Side::foreground, {{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, {0.1, 0.2, 0.3});
    scan();
    ASSERT_EQ(num_polys, 1);
    EXPECT_EQ(poly_data[0].polID, RecordingHost::polygon_id(polygon));
    expect_equal(poly_data[0].normal, 0.1, 0.2, 0.3);
    ASSERT_EQ(poly_data[0].num_points, 3);
    expect_equal(poly_data[0].points[0], 1, 2, 3);
    expect_equal(poly_data[0].points[1], 4, 5, 6);
    expect_equal(poly_data[0].points[2], 7, 8, 10);
}

TEST_F(PolygonScan, AsksForTheNormalThenForThePoints)
{
    add_ground();
    at(add_ground()).selected = false;
    at(add_ground()).type = LWPOLTYPE_PTCH;
    reserve_memory(3);
    data = poly_data;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(polscan(&par, host.info(i)), 0);
    EXPECT_EQ(host.calls, (Lines{"polyNormal(polygon 0)", "pointInfo(p0)", "pointInfo(p1)",
                                 "pointInfo(p2)", "pointInfo(p3)"}));
    EXPECT_EQ(poly_num, 1);
}

TEST_F(PolygonScan, AsksForTheNormalAlsoOfAPolygonThatIsTooSteep)
{
    limit_slopes(0.5, 1.0);
    add_ground();
    reserve_memory(1);
    data = poly_data;
    EXPECT_EQ(polscan(&par, host.info(0)), 0);
    EXPECT_EQ(host.calls, Lines{"polyNormal(polygon 0)"});
    EXPECT_EQ(poly_num, 0);
    EXPECT_EQ(poly_data[0].polID, nullptr) << "a skipped polygon writes nothing";
}

TEST_F(PolygonScan, WithoutLimitsFacesOfOneAndTwoPointsAreRecorded)
{
    host.add_polygon(Side::foreground, {{1, 2, 3}});
    host.add_polygon(Side::foreground, {{1, 2, 3}, {4, 5, 6}});
    add_facing(0, -1, 0);
    EXPECT_EQ(recorded(), (Indices{0, 1, 2}));
    EXPECT_EQ(poly_data[0].num_points, 1);
    EXPECT_EQ(poly_data[1].num_points, 2);
}

TEST_F(PolygonScan, LimitsKeepWhatFacesUpAndSkipWhatFacesDown)
{
    limit_slopes(0.0, 3.1415);
    add_facing(0, 1, 0);
    add_facing(0, -1, 0);
    EXPECT_EQ(recorded(), Indices{0});
}

TEST_F(PolygonScan, BothLimitsAreInclusive)
{
    const double slope = std::atan2(std::sqrt(0.3 * 0.3 + 0.4 * 0.4), 0.8);
    add_facing(0.3, 0.8, 0.4);
    limit_slopes(slope, slope);
    EXPECT_EQ(recorded(), Indices{0});
    limit_slopes(std::nextafter(slope, 4.0), 4.0);
    EXPECT_EQ(recorded(), Indices{});
    limit_slopes(0.0, std::nextafter(slope, 0.0));
    EXPECT_EQ(recorded(), Indices{});
}

TEST_F(PolygonScan, TheSlopeIsTheAngleFromStraightUp)
{
    add_facing(1, 0, 0);  // vertical
    add_facing(0, 0, -1); // vertical
    add_facing(0, 1, 0);
    add_facing(0, -2, 0); // of any length
    limit_slopes(pi / 2, pi / 2);
    EXPECT_EQ(recorded(), (Indices{0, 1}));
    limit_slopes(pi, pi);
    EXPECT_EQ(recorded(), Indices{3});
}

TEST_F(PolygonScan, ANormalThatIsNoNumberPasses)
{
    limit_slopes(0.5, 0.6);
    add_facing(nan, 1, 0);
    EXPECT_EQ(recorded(), Indices{0});
}

TEST_F(PolygonScan, OnlyASwitchOfExactlyOneLimits)
{
    limit_slopes(0.5, 0.6);
    add_facing(0, 1, 0);
    for (const int value : {0, 2, -1}) {
        par.slope_limits = value;
        EXPECT_EQ(recorded(), Indices{0}) << value;
    }
}

TEST_F(PolygonScan, ReservesEmptyRecordsAndReleasesOldOnes)
{
    add_ground();
    scan();
    EXPECT_EQ(reserve_memory(2), 0);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(poly_data[i].num_points, 0);
        EXPECT_EQ(poly_data[i].points, nullptr);
    }
    EXPECT_EQ(reserve_memory(0), 0);
    EXPECT_NE(poly_data, nullptr);
}

TEST_F(PolygonScan, RecordsBehindTheLastStayEmpty)
{
    add_ground();
    at(add_ground()).normal = {0, -1, 0};
    limit_slopes(0, 1);
    scan();
    EXPECT_EQ(num_polys, 1);
    EXPECT_EQ(poly_data[1].num_points, 0);
    EXPECT_EQ(poly_data[1].points, nullptr);
}

TEST_F(PolygonScan, ARecordThatIsFilledAgainReleasesItsPoints)
{
    add_ground();
    add_model();
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        reserve_memory(1);
        data = poly_data;
        polscan(&par, host.info(0));
        poly_num = 0;
        polscan(&par, host.info(0));
        EXPECT_EQ(poly_data[0].num_points, 4);
        free_memory();
    }
    EXPECT_EQ(support::allocations().made, support::allocations().freed);
    EXPECT_EQ(support::allocations().made, 3U);
}

TEST_F(PolygonScan, FreeingNothingDoesNothing)
{
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        free_memory();
        free_memory();
    }
    EXPECT_EQ(support::allocations().freed, 0U);
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(PolygonScan, FreeingReleasesTheWholeRunStateAndNothingElse)
{
    add_ground();
    par.clone_num = 3;
    support::reset_allocations();
    {
        const support::ModuleSide module_side;
        scan();
        for (const double x : {1.0, 2.0, 3.0})
            add_item(XYZ6_typ(x));
        pointID = new LWPntID[5];
        IDs = new IDs_typ;
        IDs->next = new IDs_typ;
        for (UV_typ** list : {&UVs, &WGs, &MMs, &MNs, &STs}) {
            *list = new UV_typ;
            (*list)->next = new UV_typ;
        }
        WG_val = new double[4];
        free_memory();
    }
    EXPECT_EQ(support::allocations().made, support::allocations().freed);
    EXPECT_EQ(poly_data, nullptr);
    EXPECT_EQ(pos_list, nullptr);
    EXPECT_EQ(pointID, nullptr);
    EXPECT_EQ(IDs, nullptr);
    for (const UV_typ* list : {UVs, WGs, MMs, MNs, STs})
        EXPECT_EQ(list, nullptr);
    EXPECT_EQ(WG_val, nullptr);
    EXPECT_EQ(par.clone_num, 3);
    EXPECT_EQ(edit, host.edit());
    EXPECT_EQ(draws_since(1, losoj), 0);
}

} // namespace
} // namespace dastrel
