// SPDX-License-Identifier: MIT
// What speeds a run up gives what the plain lists give, to the last bit and the last host call.
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>

#include "plugin/engine/clone.h"
#include "plugin/engine/index/point_table.h"
#include "plugin/engine/index/position_index.h"
#include "plugin/engine/indexed_positions.h"
#include "tests/plugin/module_test.h"
#include "tests/support/sanitizers.h"

namespace dastrel {
namespace {

#ifdef ADDRESS_SANITIZER
constexpr unsigned runs = 200; // each takes many times as long
#else
constexpr unsigned runs = 2000;
#endif

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Plain draws of the tests' own.
class Dice {
public:
    explicit Dice(unsigned seed) : engine(seed) {}
    int below(int bound) { return static_cast<int>(engine() % static_cast<unsigned>(bound)); }
    bool one_in(int n) { return below(n) == 0; }
    double real(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(engine()) / 4294967295.0);
    }

private:
    std::mt19937 engine;
};

/// What the walk over all positions answers; their order does not matter to it.
bool walk_too_close(const std::vector<XYZ6_typ>& placed, const XYZ6_typ& pos, double d)
{
    for (const XYZ6_typ& q : placed)
        if (!(q.x() > pos.x() + d) && q.x() > pos.x() - d && d > pos.calc_distance(q))
            return true;
    return false;
}

struct Cloud {
    const char* name;
    double scale;  ///< extent of the positions
    double offset; ///< of all of them from the origin
    double grid; ///< positions lie on multiples of this, for ties and exact distances; 0: anywhere
};

class PositionIndex : public testing::TestWithParam<Cloud> {};

TEST_P(PositionIndex, AnswersAsTheWalkDoes)
{
    const Cloud cloud = GetParam();
    int close = 0;
    int apart = 0;
    for (unsigned seed = 0; seed < 30; ++seed) {
        Dice dice(seed);
        position_index index(cloud.scale * dice.real(0.0, 0.2), dice.one_in(2) ? 0 : 3000,
                             dice.below(4) - 1);
        std::vector<XYZ6_typ> placed;
        placed.reserve(1200); // the index goes on looking at them where they are
        std::size_t asked = 0;
        const auto coordinate = [&] {
            double c = dice.real(-cloud.scale, cloud.scale);
            if (cloud.grid > 0)
                c = std::round(c / cloud.grid) * cloud.grid;
            if (dice.one_in(400))
                c = std::vector<double>{infinity, -infinity, not_a_number,
                                        -0.0}[static_cast<std::size_t>(dice.below(4))];
            return c + cloud.offset;
        };
        const auto distance = [&] {
            switch (dice.below(12)) {
            case 0:
                return std::vector<double>{0.0, -1.0, infinity, not_a_number,
                                           1e-320}[static_cast<std::size_t>(dice.below(5))];
            case 1:
                return dice.real(0.0, 4 * cloud.scale);
            case 2:
                return cloud.grid * dice.below(4);
            default:
                return cloud.scale * dice.real(0.0, 0.1);
            }
        };
        for (int i = 0; i < 1200; ++i) {
            const XYZ6_typ pos(coordinate(), dice.one_in(3) ? cloud.offset : coordinate(),
                               coordinate());
            const double d = distance();
            // Announced as the largest, as a smaller one, late, or not at all.
            const std::size_t number = asked++ % position_index::max_queries;
            if (!dice.one_in(4))
                index.prefetch_query(number, pos, dice.one_in(2) ? d : d * dice.real(0.5, 2.0));
            if (!dice.one_in(8))
                index.select_query(number);
            const bool expected = walk_too_close(placed, pos, d);
            ASSERT_EQ(index.too_close(pos, d), expected)
                << "seed " << seed << ", " << text(pos) << ", distance " << d;
            ++(expected ? close : apart);
            placed.push_back(pos);
            index.insert(placed.back());
        }
    }
    // Both answers were put to the test, but where squares overflow and nothing is ever near.
    const bool measurable = cloud.scale < 1e150;
    EXPECT_GT(close, measurable ? 1000 : -1);
    EXPECT_GT(apart, 1000);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Clouds, PositionIndex, testing::Values(
    Cloud{"plain", 10.0, 0.0, 0.0},
    Cloud{"on_a_grid", 8.0, 0.0, 0.25},
    Cloud{"far_away", 1.0, 1e9, 0.0},
    Cloud{"very_far_away", 4.0, 1e15, 0.5},
    Cloud{"tiny", 1e-200, 0.0, 0.0},
    Cloud{"tiny_and_denormal", 1e-310, 0.0, 0.0},
    Cloud{"huge", 1e200, 0.0, 0.0},
    Cloud{"as_large_as_can_be", 1e307, 0.0, 0.0}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

/// A coordinate, one in ten of them out of the ordinary.
double odd_coordinate(Dice& dice)
{
    if (!dice.one_in(10))
        return dice.below(12) * 0.5; // so that many are equal
    static constexpr double odd[] = {not_a_number, infinity, -infinity, 1e300, -1e300, 1e30, -0.0};
    return odd[dice.below(7)];
}

float odd_value(Dice& dice)
{
    static constexpr float odd[] = {std::numeric_limits<float>::quiet_NaN(),
                                    std::numeric_limits<float>::infinity(),
                                    -std::numeric_limits<float>::infinity(), 1e30F, -1e30F};
    return odd[dice.below(5)];
}

class IndexedPositions : public ModuleTest {
protected:
    ~IndexedPositions() override { plain_lists = false; }
};

TEST_F(IndexedPositions, TakesAPositionThatIsNotANumber)
{
    indexed_positions placed(1.0, 10, -1);
    EXPECT_NE(placed.add(XYZ6_typ(not_a_number, 0, 0)), nullptr);
    EXPECT_NE(placed.add(XYZ6_typ(1, 0, 0)), nullptr);
    EXPECT_FALSE(placed.too_close(XYZ6_typ(not_a_number, 0, 0), 1.0));
    EXPECT_TRUE(placed.too_close(XYZ6_typ(1.5, 0, 0), 1.0));
}

TEST_F(IndexedPositions, AnswersAndLinksAsThePlainListDoesWhateverTheNumbers)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        Dice dice(seed);
        plain_lists = true;
        par.clone_num = 200;
        discard_positions();
        indexed_positions placed(dice.real(0.0, 2.0), 200, dice.below(4) - 1);
        for (int i = 0; i < 200; ++i) {
            const XYZ6_typ pos(odd_coordinate(dice), odd_coordinate(dice), odd_coordinate(dice));
            const double d = dice.one_in(10) ? odd_coordinate(dice) : dice.real(0.0, 2.0);
            XYZ6_typ asked = pos;
            const bool expected = !check_pos(&par, &asked, 0.0, 0.0, d);
            ASSERT_EQ(placed.too_close(pos, d), expected)
                << "seed " << seed << ", " << text(pos) << ", distance " << d;
            add_item(pos)->poly = i;
            placed.add(pos)->poly = i;
        }
        pos_typ* linked = nullptr;
        placed.link(linked);
        const pos_typ* plain = pos_list;
        for (pos_typ* node = linked; node != nullptr; plain = plain->next) {
            ASSERT_NE(plain, nullptr);
            ASSERT_EQ(node->poly, plain->poly) << "seed " << seed;
            const std::unique_ptr<pos_typ> read(node);
            node = node->next;
        }
        EXPECT_EQ(plain, nullptr);
    }
}

TEST(PointTable, FindsWhatItWasGivenInThisCloneOnly)
{
    point_table table;
    for (int clone = 0; clone < 3; ++clone) {
        table.clear();
        for (int i = 0; i < 1000; ++i) {
            auto& slot = table.slot(RecordingHost::point_id(i));
            ASSERT_FALSE(table.has_copy(slot)) << i;
            table.set_copy(slot, RecordingHost::point_id(i + 5000 * clone));
            table.set_copy(slot, nullptr); // the first one counts
        }
        for (int i = 0; i < 1000; ++i) {
            const auto& slot = table.slot(RecordingHost::point_id(i));
            ASSERT_TRUE(table.has_copy(slot));
            ASSERT_EQ(point_table::copy(slot), RecordingHost::point_id(i + 5000 * clone));
        }
    }
    table.release();
    EXPECT_FALSE(table.has_copy(table.slot(RecordingHost::point_id(1))));
}

TEST(PointTable, KnowsAPointWhoseCopyCouldNotBeMade)
{
    point_table table;
    table.set_copy(table.slot(RecordingHost::point_id(7)), nullptr);
    EXPECT_TRUE(table.has_copy(table.slot(RecordingHost::point_id(7))));
    EXPECT_EQ(point_table::copy(table.slot(RecordingHost::point_id(7))), nullptr);
}

TEST(PointTable, PointsOfManySmallLayersHavePlacesOfTheirOwn)
{
    // Ids of a host that numbers the points of each layer anew, with the layer in the upper half.
    const auto id = [](std::uint64_t layer, std::uint64_t point) {
        return reinterpret_cast<LWPntID>(static_cast<std::uintptr_t>((layer << 32) + point + 1));
    };
    constexpr std::uint64_t layers = 20000;
    constexpr std::uint64_t points = 3;
    point_table table;
    for (std::uint64_t layer = 0; layer < layers; ++layer)
        for (std::uint64_t point = 0; point < points; ++point)
            (void)table.slot(id(layer, point));
    std::uint64_t at_once = 0;
    for (std::uint64_t layer = 0; layer < layers; ++layer)
        for (std::uint64_t point = 0; point < points; ++point)
            at_once += table.find_first_probe(id(layer, point)) != nullptr ? 1U : 0U;
    EXPECT_GT(at_once, layers * points / 2);
}

TEST(PointTable, TheNullPointIsOneLikeTheOthers)
{
    point_table table;
    EXPECT_FALSE(table.has_copy(table.slot(nullptr)));
    table.set_copy(table.slot(nullptr), RecordingHost::point_id(3));
    EXPECT_TRUE(table.has_copy(table.slot(nullptr)));
    EXPECT_EQ(point_table::copy(table.slot(nullptr)), RecordingHost::point_id(3));
}

class PlainLists : public ModuleTest {
protected:
    ~PlainLists() override { plain_lists = false; }

    /// A ground of faces of every kind: level, steep, far away, with points in one line or in one
    /// place, with normals that are not of unit length or not numbers.
    void make_ground(Dice& dice)
    {
        const double offset = dice.one_in(5) ? 1e7 : 0.0;
        const int faces = dice.one_in(4) ? 1 : 1 + dice.below(12);
        for (int f = 0; f < faces; ++f) {
            const int corners = dice.one_in(8) ? 1 + dice.below(2) : 3 + dice.below(4);
            std::vector<std::array<double, 3>> ring;
            const double x = offset + dice.below(4);
            const double z = dice.real(-2, 2);
            for (int i = 0; i < corners; ++i) {
                const double turn = 6.283185307179586 * i / corners;
                ring.push_back({x + (dice.one_in(9) ? 0.0 : std::cos(turn)),
                                dice.one_in(3) ? dice.real(-1, 1) : 0.0,
                                z + (dice.one_in(9) ? 0.0 : std::sin(turn))});
            }
            std::array<double, 3> normal{0.0, dice.one_in(2) ? 1.0 : -1.0, 0.0};
            if (dice.one_in(2))
                normal = {dice.real(-1, 1), dice.real(-1, 1), dice.real(-1, 1)};
            if (dice.one_in(10))
                normal[0] = not_a_number;
            if (dice.one_in(8)) {
                static constexpr double odd[] = {not_a_number, infinity, -infinity, 1e300, -1e30};
                ring[static_cast<std::size_t>(dice.below(corners))]
                    [static_cast<std::size_t>(dice.below(3))] = odd[dice.below(5)];
            }
            host.add_polygon(Side::foreground, ring, normal);
        }
    }

    /// Polygons that share points, one of them twice in one polygon.
    void make_model(Dice& dice)
    {
        add_model();
        const int first = static_cast<int>(host.points.size());
        for (int i = 0; i < 5; ++i)
            host.points.push_back({{dice.real(-1, 1), dice.real(0, 2),
                                    dice.one_in(30) ? odd_coordinate(dice) : dice.real(-1, 1)},
                                   Side::background});
        for (int i = 0; i < 4; ++i) {
            support::HostPolygon polygon;
            polygon.side = Side::background;
            for (int k = 0; k < 4; ++k)
                polygon.points.push_back(first + dice.below(5));
            host.polygons.push_back(polygon);
        }
    }

    void make_maps(Dice& dice)
    {
        const bool odd_values = dice.one_in(4);
        const std::pair<LWID, std::size_t> types[] = {
            {LWVMAP_WGHT, 1}, {LWVMAP_TXUV, 2}, {LWVMAP_MORF, 3}, {LWVMAP_SPOT, 3}};
        for (const auto& [type, dimension] : types) {
            for (const char* name : {"First", "Second"}) {
                support::HostMap map{type, name, {}};
                for (int i = 0; i < static_cast<int>(host.points.size()); ++i) {
                    if (dice.one_in(3))
                        continue;
                    std::vector<float> value;
                    for (std::size_t k = 0; k < dimension; ++k)
                        value.push_back(odd_values && dice.one_in(5)
                                            ? odd_value(dice)
                                            : static_cast<float>(dice.real(-1.2, 1.2)));
                    map.values[i] = value;
                }
                host.maps.push_back(map);
            }
        }
    }

    static params_typ make_settings(Dice& dice)
    {
        params_typ settings;
        settings.clone_num = dice.below(60);
        settings.distribution = dice.one_in(5) ? 0.0 : dice.real(0.0, 1.5);
        settings.iterations = dice.below(25);
        settings.seed = dice.below(1000) - 500;
        settings.size_poly_area = dice.below(3); // 2 is not on
        settings.density_wg = dice.below(4);     // 3 has no map
        settings.p_angle_wg = dice.below(3);
        settings.p_absolute = dice.below(2);
        settings.h_align = dice.below(2);
        settings.p_align = dice.below(2);
        settings.size_wg = dice.below(3);
        settings.size_indep = dice.below(2);
        settings.jitter = dice.one_in(2) ? 0.0 : dice.real(0.0, 1.5);
        settings.auto_morph_maps = dice.below(3);
        if (dice.one_in(3))
            settings.h_min = settings.h_max = settings.b_min = settings.b_max = 0.0;
        return settings;
    }

    /// Everything that a run asked of the host and wrote, and where it left the samplers.
    Lines outcome(const params_typ& settings, bool plain)
    {
        reset_module();
        host.forget();
        host.choices.clear();
        use(settings);
        plain_lists = plain;
        EXPECT_EQ(run(), 0);
        Lines lines = host.calls;
        lines.push_back(std::to_string(losoj.mti) + " " + support::number(losoj.get()));
        lines.push_back(std::to_string(morph_map_num));
        return lines;
    }
};

TEST_F(PlainLists, AndTheirIndexesMakeTheSameHostCalls)
{
    std::size_t longest = 0;
    for (unsigned seed = 0; seed < runs; ++seed) {
        Dice dice(seed);
        host.points.clear();
        host.polygons.clear();
        host.maps.clear();
        make_ground(dice);
        make_model(dice);
        make_maps(dice);
        const params_typ settings = make_settings(dice);
        const Lines plain = outcome(settings, true);
        const Lines fast = outcome(settings, false);
        longest = std::max(longest, plain.size());
        ASSERT_EQ(fast.size(), plain.size()) << "seed " << seed;
        for (std::size_t i = 0; i < plain.size(); ++i)
            ASSERT_EQ(fast[i], plain[i]) << "seed " << seed << ", call " << i;
    }
    EXPECT_GT(longest, 1000U);
}

} // namespace
} // namespace dastrel
