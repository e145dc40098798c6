// SPDX-License-Identifier: MIT
#include "plugin/engine/UV_typ.h"
#include "plugin/engine/clone.h"
#include "plugin/engine/pos_typ.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

/// What a clone's points take over from the maps of the model.
class VertexMaps : public ModuleTest {
protected:
    VertexMaps()
    {
        use(still());
        par.clone_num = 4;
        par.akt_clone = 0;
        akt_item = &item;
        model = host.add_polygon(Side::background, {{1, 0, 0}});
    }

    ~VertexMaps() override { akt_item = nullptr; }

    void add_map(LWID type, const char* name, std::map<int, std::vector<float>> values)
    {
        host.maps.push_back({type, name, std::move(values)});
    }

    void list_maps()
    {
        get_any_map_names(objfunc, LWVMAP_TXUV, &UVs);
        get_any_map_names(objfunc, LWVMAP_WGHT, &WGs);
        get_any_map_names(objfunc, LWVMAP_MORF, &MMs);
        get_any_map_names(objfunc, LWVMAP_MNVW, &MNs);
        get_any_map_names(objfunc, LWVMAP_SPOT, &STs);
        host.calls.clear();
    }

    /// The calls that carry the maps of the one point, after `addPoint`.
    Lines carried()
    {
        host.calls.clear();
        clone_object(&par);
        Lines lines(host.calls.begin() + 3, host.calls.end());
        lines.pop_back(); // the polygon
        return lines;
    }

    /// The value that the first added point got; empty when it has none.
    std::vector<float> value(LWID type, const std::string& name, int point = 0)
    {
        const auto map = host.written.find({type, name});
        if (map == host.written.end() || map->second.count(point) == 0)
            return {};
        return map->second.at(point);
    }

    int model = 0;
    pos_typ item;
};

TEST_F(VertexMaps, NamesAreListedInTheHostsOrder)
{
    add_map(LWVMAP_WGHT, "Stone", {});
    add_map(LWVMAP_TXUV, "Leaf", {});
    add_map(LWVMAP_WGHT, "Grass", {});
    get_any_map_names(objfunc, LWVMAP_WGHT, &WGs);
    EXPECT_STREQ(WGs->name, "Stone");
    EXPECT_STREQ(WGs->next->name, "Grass");
    EXPECT_EQ(WGs->next->next, nullptr);
    EXPECT_EQ(host.calls, (Lines{"numVMaps(WGHT)", "vmapName(WGHT, 0)", "vmapName(WGHT, 1)"}));
}

TEST_F(VertexMaps, AListStaysAsItIsWhenThereIsNoMap)
{
    UV_typ earlier;
    UVs = &earlier;
    get_any_map_names(objfunc, LWVMAP_TXUV, &UVs);
    EXPECT_EQ(UVs, &earlier);
    EXPECT_EQ(host.calls, Lines{"numVMaps(TXUV)"});
    UVs = nullptr;
}

TEST_F(VertexMaps, AreCarriedInTheirOrderOfTypes)
{
    add_map(LWVMAP_SPOT, "Open", {{0, {7, 8, 9}}});
    add_map(LWVMAP_MNVW, "Sub", {{0, {0.5F}}});
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 2, 3}}});
    add_map(LWVMAP_WGHT, "Grass", {{0, {0.25F}}});
    add_map(LWVMAP_TXUV, "Leaf", {{0, {0.1F, 0.2F}}});
    add_map(LWVMAP_TXUV, "Bark", {{0, {0.3F, 0.4F}}});
    list_maps();
    EXPECT_EQ(carried(),
              (Lines{"pointVSet(null, TXUV, \"Leaf\")", "pointVGet(p0)",
                     "pntVMap(n0, TXUV, \"Leaf\", 2: 0.1 0.2)", "pointVSet(null, TXUV, \"Bark\")",
                     "pointVGet(p0)", "pntVMap(n0, TXUV, \"Bark\", 2: 0.3 0.4)",
                     "pointVSet(null, WGHT, \"Grass\")", "pointVGet(p0)",
                     "pntVMap(n0, WGHT, \"Grass\", 1: 0.25)",
                     "pntVMap(n0, WGHT, \"DT_index\", 1: 0)", "pointVSet(null, MORF, \"Smile\")",
                     "pointVGet(p0)", "pntVMap(n0, MORF, \"Smile\", 3: 1 2 3)",
                     "pointVSet(null, MNVW, \"Sub\")", "pointVGet(p0)",
                     "pntVMap(n0, MNVW, \"Sub\", 1: 0.5)", "pointVSet(null, SPOT, \"Open\")",
                     "pointVGet(p0)", "pntVMap(n0, SPOT, \"Open\", 3: 7 8 9)"}));
}

TEST_F(VertexMaps, OfOtherTypesAreNotCarried)
{
    add_map(LWID_PACK('R', 'G', 'B', 'A'), "Colour", {{0, {1, 1, 1, 1}}});
    add_map(LWID_PACK('P', 'I', 'C', 'K'), "Set", {{0, {}}});
    add_map(LWID_PACK('N', 'O', 'R', 'M'), "Normals", {{0, {0, 1, 0}}});
    list_maps();
    EXPECT_EQ(carried(), Lines{"pntVMap(n0, WGHT, \"DT_index\", 1: 0)"});
}

TEST_F(VertexMaps, StayPartial)
{
    add_map(LWVMAP_TXUV, "Leaf", {});
    add_map(LWVMAP_WGHT, "Grass", {});
    add_map(LWVMAP_MORF, "Smile", {});
    add_map(LWVMAP_MNVW, "Sub", {});
    add_map(LWVMAP_SPOT, "Open", {});
    list_maps();
    par.jitter = 0.5;
    EXPECT_EQ(carried(),
              (Lines{"pointVSet(null, TXUV, \"Leaf\")", "pointVGet(p0)",
                     "pointVSet(null, WGHT, \"Grass\")", "pointVGet(p0)",
                     "pntVMap(n0, WGHT, \"DT_index\", 1: 0)", "pointVSet(null, MORF, \"Smile\")",
                     "pointVGet(p0)", "pointVSet(null, MNVW, \"Sub\")", "pointVGet(p0)",
                     "pointVSet(null, SPOT, \"Open\")", "pointVGet(p0)"}));
    EXPECT_EQ(draws_since(1, losoj), 1) << "an absent morph is not transformed";
}

TEST_F(VertexMaps, TheIndexIsDividedInSinglePrecision)
{
    for (int clone = 0; clone < 4; ++clone) {
        par.akt_clone = clone;
        clone_object(&par);
        EXPECT_EQ(value(LWVMAP_WGHT, "DT_index", clone),
                  std::vector<float>{static_cast<float>(clone) * 0.25F});
    }
    par.clone_num = 16777217; // no float holds it
    par.akt_clone = 16777216;
    clone_object(&par);
    EXPECT_EQ(value(LWVMAP_WGHT, "DT_index", 4), std::vector<float>{1.0F});
    par.clone_num = 3;
    par.akt_clone = 1;
    clone_object(&par);
    EXPECT_EQ(value(LWVMAP_WGHT, "DT_index", 5), std::vector<float>{1.0F / 3.0F});
}

TEST_F(VertexMaps, AnIndexOfAnEarlierRunIsCopiedThenOverwritten)
{
    add_map(LWVMAP_WGHT, "DT_index", {{0, {0.875F}}});
    list_maps();
    par.akt_clone = 1;
    EXPECT_EQ(carried(), (Lines{"pointVSet(null, WGHT, \"DT_index\")", "pointVGet(p0)",
                                "pntVMap(n0, WGHT, \"DT_index\", 1: 0.875)",
                                "pntVMap(n0, WGHT, \"DT_index\", 1: 0.25)"}));
    EXPECT_EQ(value(LWVMAP_WGHT, "DT_index"), std::vector<float>{0.25F});
}

TEST_F(VertexMaps, RelativeMorphsTurnWithTheCloneAndAreNotMoved)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    add_map(LWVMAP_SPOT, "Open", {{0, {1, 0, 0}}});
    list_maps();
    par.h_min = par.h_max = 1.5707963267948966;
    item.pos = XYZ6_typ(10, 20, 30);
    clone_object(&par);
    const std::vector<float> morph = value(LWVMAP_MORF, "Smile");
    ASSERT_EQ(morph.size(), 3U);
    EXPECT_NEAR(morph[0], 0, 1e-7);
    EXPECT_EQ(morph[1], 0);
    EXPECT_EQ(morph[2], 1.0F);
    EXPECT_EQ(value(LWVMAP_SPOT, "Open"), (std::vector<float>{1, 0, 0}));
}

TEST_F(VertexMaps, RelativeMorphsAreSizedAndWeighted)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 2, 3}}});
    list_maps();
    double weights[] = {1.0};
    WG_val = weights;
    par.size_wg = 1;
    par.size_wg_influence = 1.0;
    clone_object(&par);
    WG_val = nullptr;
    EXPECT_EQ(value(LWVMAP_MORF, "Smile"), (std::vector<float>{2, 4, 6}));
}

TEST_F(VertexMaps, EachRelativeMorphTakesAJitterOfItsOwn)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    add_map(LWVMAP_MORF, "Frown", {{0, {1, 0, 0}}});
    list_maps();
    par.jitter = 0.5;
    random beside;
    beside.randomize(1);
    clone_object(&par);
    EXPECT_EQ(host.added_points[0][0], beside.z_zakresu(0.5, 1.5));
    for (const char* name : {"Smile", "Frown"})
        EXPECT_EQ(value(LWVMAP_MORF, name)[0], static_cast<float>(beside.z_zakresu(0.5, 1.5)));
    EXPECT_EQ(draws_since(1, losoj), 3);
}

TEST_F(VertexMaps, WithoutJitterMorphsTakeNoDraw)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    list_maps();
    clone_object(&par);
    EXPECT_EQ(draws_since(1, losoj), 0);
}

TEST_F(VertexMaps, NumberedMorphsLeaveTheModelsOwnMapAlone)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    add_map(LWVMAP_SPOT, "Smile", {{0, {1, 0, 0}}});
    list_maps();
    par.auto_morph_maps = 2;
    for (int i = 0; i < 200; ++i)
        clone_object(&par);
    std::size_t values = 0;
    for (const char* name : {"Smile1", "Smile2", "Smile3"}) {
        const std::size_t count = host.written[{LWVMAP_MORF, name}].size();
        EXPECT_GT(count, 20U) << name;
        values += count;
    }
    EXPECT_EQ(values, 200U);
    EXPECT_EQ(host.written.count({LWVMAP_MORF, "Smile"}), 0U);
    EXPECT_EQ(host.written.count({LWVMAP_SPOT, "Smile"}), 1U) << "absolute morphs keep their name";
}

TEST_F(VertexMaps, ANumberGoesBehindANumber)
{
    add_map(LWVMAP_MORF, "Smile1", {{0, {1, 0, 0}}});
    list_maps();
    morph_map_num = 2;
    clone_object(&par);
    EXPECT_EQ(value(LWVMAP_MORF, "Smile12").size(), 3U);
}

TEST_F(VertexMaps, ANegativeNumberIsAppendedWithItsSign)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    list_maps();
    morph_map_num = -1;
    clone_object(&par);
    EXPECT_EQ(value(LWVMAP_MORF, "Smile-1").size(), 3U);
}

TEST_F(VertexMaps, ANumberOfAnEarlierRunIsStillAppended)
{
    add_map(LWVMAP_MORF, "Smile", {{0, {1, 0, 0}}});
    list_maps();
    par.auto_morph_maps = 5;
    clone_object(&par);
    const int number = morph_map_num;
    ASSERT_GT(number, 0);
    host.forget();
    par.auto_morph_maps = 0;
    clone_object(&par);
    EXPECT_EQ(value(LWVMAP_MORF, "Smile" + std::to_string(number)).size(), 3U);
}

} // namespace
} // namespace dastrel
