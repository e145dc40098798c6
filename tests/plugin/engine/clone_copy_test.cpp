// SPDX-License-Identifier: MIT
#include "plugin/engine/IDs_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// The copy of the model at one position.
class CloneCopy : public ModuleTest {
protected:
    CloneCopy()
    {
        use(still());
        par.clone_num = 1;
        par.akt_clone = 0;
        akt_item = &item;
        item.pos = XYZ6_typ(10, 20, 30);
    }

    ~CloneCopy() override { akt_item = nullptr; }

    void copy() { EXPECT_TRUE(clone_object(&par)); }

    pos_typ item;
};

TEST_F(CloneCopy, CallsTheHostPointByPointThenForThePolygon)
{
    add_ground();
    add_model();
    copy();
    EXPECT_EQ(host.calls,
              (Lines{"polyScan(background)", "pointInfo(p4)", "addPoint(11, 20, 30) = n0",
                     "pntVMap(n0, WGHT, \"DT_index\", 1: 0)", "pointInfo(p5)",
                     "addPoint(10, 22, 30) = n1", "pntVMap(n1, WGHT, \"DT_index\", 1: 0)",
                     "pointInfo(p6)", "addPoint(10, 20, 34) = n2",
                     "pntVMap(n2, WGHT, \"DT_index\", 1: 0)",
                     "addPoly(FACE, like polygon 1, null, 3: n0 n1 n2)"}));
}

TEST_F(CloneCopy, IsExactWhenNothingVaries)
{
    add_model();
    host.points[0].position = {0.1, 0.2, 0.3};
    item.pos = XYZ6_typ(0.7, 0.8, 0.9);
    copy();
    EXPECT_EQ(host.added_points[0], (std::array<double, 3>{0.1 + 0.7, 0.2 + 0.8, 0.3 + 0.9}));
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(CloneCopy, SharesAPointOfSeveralPolygonsWithinOneClone)
{
    add_model();
    support::HostPolygon second;
    second.side = Side::background;
    second.points = {2, 1, 0, 1}; // names a point twice, too
    host.polygons.push_back(second);
    par.jitter = 0.25;
    copy();
    EXPECT_EQ(host.added_points.size(), 3U);
    ASSERT_EQ(host.added_polygons.size(), 2U);
    EXPECT_EQ(host.added_polygons[0].points, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(host.added_polygons[1].points, (std::vector<int>{2, 1, 0, 1}));
    EXPECT_EQ(draws_since(1, losoj), 3) << "a shared point is transformed once";
    EXPECT_EQ(host.calls_to("pointInfo").size(), 3U);
    EXPECT_EQ(host.calls_to("pntVMap").size(), 3U);
}

TEST_F(CloneCopy, NeverSharesPointsBetweenClones)
{
    add_model();
    copy();
    copy();
    EXPECT_EQ(host.added_points.size(), 6U);
    EXPECT_EQ(host.added_polygons[1].points, (std::vector<int>{3, 4, 5}));
}

TEST_F(CloneCopy, LeavesPointsWithoutAPolygonOut)
{
    add_model();
    host.points.push_back({{7, 7, 7}, Side::background});
    copy();
    EXPECT_EQ(host.added_points.size(), 3U);
}

TEST_F(CloneCopy, KeepsTypePointOrderAndTemplateOfEveryPolygon)
{
    add_ground();
    for (const LWID type : {LWPOLTYPE_FACE, LWPOLTYPE_CURV, LWPOLTYPE_PTCH,
                            LWID_PACK('S', 'U', 'B', 'D'), LWID_PACK('B', 'O', 'N', 'E')}) {
        const int polygon = add_model();
        host.polygons[static_cast<std::size_t>(polygon)].type = type;
        host.polygons[static_cast<std::size_t>(polygon)].selected = false;
    }
    copy();
    ASSERT_EQ(host.added_polygons.size(), 5U);
    for (int i = 0; i < 5; ++i) {
        const support::AddedPolygon& added = host.added_polygons[static_cast<std::size_t>(i)];
        EXPECT_EQ(added.source, i + 1);
        EXPECT_EQ(added.type, host.polygons[static_cast<std::size_t>(i) + 1].type);
    }
}

TEST_F(CloneCopy, CopiesAPolygonWithoutPoints)
{
    support::HostPolygon empty;
    empty.side = Side::background;
    host.polygons.push_back(empty);
    copy();
    EXPECT_EQ(host.calls,
              (Lines{"polyScan(background)", "addPoly(FACE, like polygon 0, null, 0:)"}));
}

TEST_F(CloneCopy, StoresAPointThatTheHostDidNotMakeAsItIs)
{
    add_model();
    host.gives_points = false;
    copy();
    ASSERT_EQ(host.added_polygons.size(), 1U);
    EXPECT_EQ(host.added_polygons[0].points, (std::vector<int>{-1, -1, -1}));
}

/// A host for which all points are one: its `pointInfo` names another point than it was asked for.
const EDPointInfo* first_point_info(void* state, LWPntID /*point*/)
{
    return static_cast<RecordingHost*>(state)->edit()->pointInfo(state, RecordingHost::point_id(0));
}

TEST_F(CloneCopy, RemembersThePointThatTheHostTellsOf)
{
    add_model();
    MeshEditOp other = *host.edit();
    other.pointInfo = first_point_info;
    edit = &other;
    copy();
    for (const IDs_typ* node = IDs; node != nullptr; node = node->next)
        EXPECT_EQ(node->old_id, RecordingHost::point_id(0));
}

TEST_F(CloneCopy, LeavesItsPointMapInOrderOfCreationForTheEndOfTheRun)
{
    add_ground();
    add_model();
    copy();
    int i = 0;
    for (const IDs_typ* node = IDs; node != nullptr; node = node->next, ++i) {
        EXPECT_EQ(node->old_id, RecordingHost::point_id(4 + i));
        EXPECT_EQ(node->new_id, RecordingHost::point_id(7 + i));
    }
    EXPECT_EQ(i, 3);
    akt_point = 77;
    host.polygons.clear();
    copy();
    EXPECT_EQ(IDs, nullptr) << "a new clone starts with an empty map";
    EXPECT_EQ(akt_point, 0);
}

TEST_F(CloneCopy, LetsTheScanGoOn)
{
    add_model();
    EXPECT_EQ(poly_clone(&par, host.info(0)), EDERR_NONE);
    host.scan_codes = {5};
    copy(); // whatever the scan answers
}

TEST_F(CloneCopy, DrawsForPointsInScanOrder)
{
    add_model();
    par.h_min = -0.5;
    par.h_max = 0.5;
    par.jitter = 0.25;
    random beside;
    beside.randomize(1);
    const double heading = beside.z_zakresu(-0.5, 0.5);
    const XYZ6_typ corners[] = {{1, 0, 0}, {0, 2, 0}, {0, 0, 4}};
    copy();
    for (std::size_t i = 0; i < 3; ++i) {
        const double factor = beside.z_zakresu(0.75, 1.25);
        const XYZ6_typ expected =
            (corners[i] * 1.0 * factor).rotate_Y(heading).move(XYZ6_typ(10, 20, 30));
        EXPECT_EQ(text(XYZ6_typ(host.added_points[i].data())), text(expected));
    }
}

} // namespace
} // namespace dastrel
