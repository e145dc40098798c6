// SPDX-License-Identifier: MIT
#include <cmath>
#include <memory>

#include "plugin/engine/clone.h"
#include "plugin/weights/LW6-weight.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

class WeightMap : public ModuleTest {
protected:
    WeightMap() : reader(nullptr) { reader.add_edit(edit); }

    void add_map(const char* name, std::map<int, std::vector<float>> values = {})
    {
        host.maps.push_back({LWVMAP_WGHT, name, std::move(values)});
    }

    Lines list()
    {
        const std::unique_ptr<char*[]> entries(reader.get_list(objfunc));
        Lines texts;
        for (int i = 0; entries[static_cast<std::size_t>(i)] != nullptr; ++i)
            texts.emplace_back(entries[static_cast<std::size_t>(i)]);
        return texts;
    }

    double weight(int polygon, const char* name)
    {
        return reader.calc_weight(RecordingHost::polygon_id(polygon), XYZ6_typ(7.0), name);
    }

    weight_map reader;
};

TEST_F(WeightMap, KeepsItsEditAndNoNamesAtFirst)
{
    const weight_map fresh(edit);
    EXPECT_EQ(fresh.edit, edit);
    EXPECT_EQ(fresh.head, nullptr);
    EXPECT_EQ(reader.edit, edit);
}

TEST_F(WeightMap, OfASceneWithoutMapsOffersNoneAlone)
{
    add_ground();
    host.maps.push_back({LWVMAP_TXUV, "Leaf", {}}); // of another type
    EXPECT_EQ(list(), Lines{"none"});
    EXPECT_EQ(reader.count, 0);
    EXPECT_EQ(reader.head, nullptr);
    for (const int index : {-1, 0, 1, 2})
        EXPECT_EQ(reader.get_name(index), nullptr);
    EXPECT_EQ(weight(0, "Grass"), 1.0);
    EXPECT_EQ(host.calls, Lines{"numVMaps(WGHT)"});
}

TEST_F(WeightMap, AsksTheHostTwiceForEachName)
{
    add_map("Grass");
    add_map("Stone");
    EXPECT_EQ(list(), (Lines{"none", "Grass", "Stone"}));
    EXPECT_EQ(reader.count, 2);
    EXPECT_EQ(host.calls, (Lines{"numVMaps(WGHT)", "vmapName(WGHT, 0)", "vmapName(WGHT, 0)",
                                 "vmapName(WGHT, 1)", "vmapName(WGHT, 1)"}));
}

TEST_F(WeightMap, APopupIndexCountsMapsFromOne)
{
    add_map("Grass");
    add_map("Stone");
    add_map("Snow");
    (void)list();
    EXPECT_STREQ(reader.get_name(1)->name, "Grass");
    EXPECT_STREQ(reader.get_name(2)->name, "Stone");
    EXPECT_STREQ(reader.get_name(3)->name, "Snow");
    for (const int index : {-1, 0, 4})
        EXPECT_EQ(reader.get_name(index), nullptr) << index;
    EXPECT_STREQ(weight_map_name(reader, 2), "Stone");
    EXPECT_EQ(weight_map_name(reader, 4), nullptr);
}

TEST_F(WeightMap, GivesTheMeanInSinglePrecisionWithAbsentValuesCounting)
{
    add_model();
    add_map("Grass", {{0, {1.0F}}, {1, {0.0F}}});
    (void)list();
    const double expected = static_cast<double>(1.0F / 3.0F);
    EXPECT_EQ(weight(0, "Grass"), expected);
    EXPECT_NE(expected, 1.0 / 3.0);
}

TEST_F(WeightMap, SumsInSinglePrecision)
{
    add_model();
    add_map("Grass", {{0, {16777216.0F}}, {1, {1.0F}}, {2, {1.0F}}});
    (void)list();
    EXPECT_EQ(weight(0, "Grass"), static_cast<double>(16777216.0F / 3.0F)); // each 1 is lost
}

TEST_F(WeightMap, TakesTheFirstComponent)
{
    add_model();
    add_map("Grass", {{0, {0.75F, 9.0F}}, {1, {0.75F, 9.0F}}, {2, {0.75F, 9.0F}}});
    (void)list();
    EXPECT_EQ(weight(0, "Grass"), 0.75);
}

TEST_F(WeightMap, OfAPolygonWithoutValuesIsZero)
{
    add_model();
    add_map("Grass");
    (void)list();
    EXPECT_EQ(weight(0, "Grass"), 0.0);
}

TEST_F(WeightMap, OfAPolygonWithoutPointsIsNoNumber)
{
    host.polygons.emplace_back();
    add_map("Grass");
    (void)list();
    EXPECT_TRUE(std::isnan(weight(0, "Grass")));
}

TEST_F(WeightMap, OfAPolygonThatTheHostDoesNotKnowIsZero)
{
    host.polygons[static_cast<std::size_t>(add_model())].unknown = true;
    add_map("Grass", {{0, {1.0F}}, {1, {1.0F}}, {2, {1.0F}}});
    (void)list();
    EXPECT_EQ(weight(0, "Grass"), 0.0);
}

TEST_F(WeightMap, IsFullWithoutANameAnEditOrItsState)
{
    add_model();
    add_map("Grass");
    (void)list();
    EXPECT_EQ(weight(0, nullptr), 1.0);
    MeshEditOp stateless = *edit;
    stateless.state = nullptr;
    reader.add_edit(&stateless);
    EXPECT_EQ(weight(0, "Grass"), 1.0);
    reader.add_edit(nullptr);
    EXPECT_EQ(weight(0, "Grass"), 1.0);
}

TEST_F(WeightMap, SelectsTheMapThenReadsThePolygonAndItsPointsInOrder)
{
    add_model();
    add_map("Grass");
    (void)list();
    host.calls.clear();
    (void)weight(0, "Grass");
    EXPECT_EQ(host.calls, (Lines{"pointVSet(null, WGHT, \"Grass\")", "polyInfo(polygon 0)",
                                 "pointInfo(p0)", "pointInfo(p1)", "pointInfo(p2)"}));
}

TEST_F(WeightMap, SizeWeightsAreFilledForEachRecord)
{
    add_ground();
    add_ground(2);
    add_map("Grass", {{0, {1.0F}}, {1, {1.0F}}, {2, {1.0F}}, {3, {1.0F}}, {4, {2.0F}}});
    add_map("Stone");
    (void)list();
    scan();
    get_wg_info(2, &reader, 1);
    EXPECT_EQ(WG_val[0], 1.0);
    EXPECT_EQ(WG_val[1], 0.5);
    get_wg_info(2, &reader, 2); // the old array is released
    EXPECT_EQ(WG_val[0], 0.0);
    EXPECT_EQ(WG_val[1], 0.0);
}

TEST_F(WeightMap, SizeWeightsOfAnIndexWithoutAMapAreFull)
{
    add_ground();
    add_map("Grass");
    (void)list();
    scan();
    for (const int index : {0, -3, 2}) {
        get_wg_info(1, &reader, index);
        EXPECT_EQ(WG_val[0], 1.0) << index;
    }
    EXPECT_EQ(host.calls, Lines{});
}

TEST_F(WeightMap, CountsMapsOfTypeTdvt)
{
    EXPECT_FALSE(reader.get_td_info(objfunc));
    host.maps.push_back({LWVMAP_TDVT, "Time", {}});
    EXPECT_TRUE(reader.get_td_info(objfunc));
    EXPECT_EQ(host.calls, (Lines{"numVMaps(TDVT)", "numVMaps(TDVT)"}));
}

} // namespace
} // namespace dastrel
