// SPDX-License-Identifier: MIT
#include "mesh/vertex_map.h"

#include <array>
#include <map>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::VertexMap;
using testing::ElementsAre;

/// What a map is compared with: value by point.
using Model = std::map<std::uint32_t, std::vector<float>>;

constexpr std::uint32_t most_points = 300; // several words of presence bits

std::vector<float> value_of(std::size_t dimension, int seed)
{
    std::vector<float> value;
    for (std::size_t i = 0; i < dimension; ++i)
        value.push_back(static_cast<float>(seed) + static_cast<float>(i) / 8.0f);
    return value;
}

void check_equal(const VertexMap& map, const Model& model)
{
    RC_ASSERT(map.size() == model.size());
    std::vector<float> packed;
    for (const auto& [point, value] : model)
        packed.insert(packed.end(), value.begin(), value.end());
    RC_ASSERT(std::vector<float>(map.values().begin(), map.values().end()) == packed);
    for (std::uint32_t point = 0; point < most_points + 70; ++point) {
        const auto expected = model.find(point);
        RC_ASSERT(map.has(point) == (expected != model.end()));
        const auto found = map.find(point);
        const float* const in_run = map.find_in_run(point);
        RC_ASSERT(in_run == nullptr || (map.has(point) && in_run == found.data()));
        RC_ASSERT(std::vector<float>(found.begin(), found.end()) ==
                  (expected != model.end() ? expected->second : std::vector<float>{}));
    }
    Model visited;
    std::vector<std::uint32_t> order;
    map.for_each([&](std::uint32_t point, std::span<const float> value) {
        visited[point] = {value.begin(), value.end()};
        order.push_back(point);
    });
    RC_ASSERT(visited == model);
    RC_ASSERT(std::is_sorted(order.begin(), order.end()));
    RC_ASSERT(order.size() == model.size());
}

/// Compares what a map says of the points of a range.
void check_range(const VertexMap& map, const Model& model, std::uint32_t begin, std::uint32_t end)
{
    Model expected;
    if (begin < end)
        expected.insert(model.lower_bound(begin), model.lower_bound(end));
    Model visited;
    map.for_each_in(begin, end, [&](std::uint32_t point, std::span<const float> value) {
        visited[point] = {value.begin(), value.end()};
    });
    RC_ASSERT(visited == expected);
    RC_ASSERT(map.count_in(begin, end) == expected.size());
}

/// Sets a run of neighbours.
void set_run(VertexMap& map, Model& model, std::uint32_t first, int seed)
{
    const std::uint32_t end = std::min(first + *rc::gen::inRange(0u, 140u), most_points);
    for (std::uint32_t point = first; point < end; ++point) {
        const auto value = value_of(map.dimension(), seed++);
        map.set(point, value);
        model[point] = value;
    }
}

/// Appends some points behind all that have a value, now and then neighbours.
void append_some(VertexMap& map, Model& model, int seed)
{
    std::uint32_t next = model.empty() ? 0 : model.rbegin()->first + 1;
    std::vector<std::uint32_t> points;
    std::vector<float> values;
    const int most_gap = *rc::gen::element(1, 100); // 1: none
    for (const auto gap : *rc::gen::container<std::vector<std::uint8_t>>(
             rc::gen::inRange<std::uint8_t>(0, static_cast<std::uint8_t>(most_gap)))) {
        next += gap;
        if (next >= most_points)
            break;
        const auto value = value_of(map.dimension(), seed++);
        points.push_back(next);
        values.insert(values.end(), value.begin(), value.end());
        model[next++] = value;
    }
    map.append(points, values);
}

RC_GTEST_PROP(VertexMapLaw, BehavesAsAnOrderedMap, ())
{
    const auto dimension = *rc::gen::inRange<std::size_t>(0, 4);
    VertexMap map(mesh::map_wght, "m", dimension);
    Model model;
    struct Step {
        int kind;
        std::uint32_t point;
        int seed;
    };
    const auto count = *rc::gen::inRange(0, *rc::gen::element(4, 120)); // few steps keep runs
    for (int i = 0; i < count; ++i) {
        const Step step{*rc::gen::inRange(0, 10), *rc::gen::inRange<std::uint32_t>(0, most_points),
                        *rc::gen::inRange(-50, 50)};
        if (step.kind < 5) { // mostly values come
            map.set(step.point, value_of(dimension, step.seed));
            model[step.point] = value_of(dimension, step.seed);
        } else if (step.kind < 7) {
            map.erase(step.point);
            model.erase(step.point);
        } else if (step.kind == 7) {
            map.truncate(step.point);
            model.erase(model.lower_bound(step.point), model.end());
        } else if (step.kind == 8) {
            append_some(map, model, step.seed);
        } else {
            set_run(map, model, model.empty() ? step.point : model.rbegin()->first + 1, step.seed);
        }
    }
    check_equal(map, model);
    const auto any_point = rc::gen::inRange<std::uint32_t>(0, most_points + 70);
    for (int i = 0; i < 20; ++i)
        check_range(map, model, *any_point, *any_point);
}

RC_GTEST_PROP(VertexMapLaw, TheOrderOfSettingDoesNotMatter,
              (const std::vector<std::uint8_t>& points))
{
    VertexMap forth(mesh::map_wght, "m", 1);
    VertexMap back(mesh::map_wght, "m", 1);
    for (std::size_t i = 0; i < points.size(); ++i) {
        forth.set(points[i], value_of(1, points[i]));
        const std::uint8_t last = points[points.size() - 1 - i];
        back.set(last, value_of(1, last));
    }
    RC_ASSERT(std::vector<float>(forth.values().begin(), forth.values().end()) ==
              std::vector<float>(back.values().begin(), back.values().end()));
    for (std::uint32_t point = 0; point < 256; ++point)
        RC_ASSERT(forth.has(point) == back.has(point));
}

TEST(VertexMap, KnowsItsTypeNameAndDimension)
{
    const VertexMap map(mesh::map_txuv, "Tex", 2);
    EXPECT_EQ(map.type(), mesh::map_txuv);
    EXPECT_EQ(map.name(), "Tex");
    EXPECT_EQ(map.dimension(), 2u);
    EXPECT_EQ(map.size(), 0u);
    EXPECT_FALSE(map.has(0));
    EXPECT_TRUE(map.find(0).empty());
}

TEST(VertexMap, AValueIsReplacedInPlace)
{
    VertexMap map(mesh::map_txuv, "Tex", 2);
    map.set(7, std::array{1.f, 2.f});
    map.set(7, std::array{3.f, 4.f});
    EXPECT_EQ(map.size(), 1u);
    EXPECT_THAT(map.find(7), ElementsAre(3.f, 4.f));
}

TEST(VertexMap, FindsInARunAtOnce)
{
    VertexMap map(mesh::map_wght, "run", 1);
    for (std::uint32_t point = 100; point < 200; ++point)
        map.set(point, std::array{static_cast<float>(point)});
    ASSERT_NE(map.find_in_run(170), nullptr);
    EXPECT_EQ(*map.find_in_run(170), 170.0f);
    EXPECT_EQ(map.find_in_run(99), nullptr);
    EXPECT_EQ(map.find_in_run(200), nullptr);
    map.erase(103);
    EXPECT_EQ(map.find_in_run(170), nullptr);
    EXPECT_THAT(map.find(170), ElementsAre(170.0f));
}

TEST(VertexMap, ExtendsARunWhereThereIsRoom)
{
    VertexMap map(mesh::map_txuv, "room", 2);
    const std::array value{0.5f, 1.0f};
    EXPECT_FALSE(map.extend_run(0, value)) << "there is no run yet";
    map.set(63, value);
    EXPECT_FALSE(map.extend_run(62, value));
    EXPECT_FALSE(map.extend_run(63, value));
    EXPECT_FALSE(map.extend_run(65, value));
    EXPECT_EQ(map.size(), 1u);
    EXPECT_TRUE(map.extend_run(64, value));
    EXPECT_EQ(map.size(), 2u);
    EXPECT_THAT(map.find(64), ElementsAre(0.5f, 1.0f));
    map.set(66, value);
    EXPECT_FALSE(map.extend_run(67, value)) << "the points are a run no longer";
    EXPECT_EQ(map.size(), 3u);
}

TEST(VertexMap, ARunBecomesScatteredPointsWithTheSameValues)
{
    for (const std::uint32_t begin : {0u, 1u, 63u, 64u, 130u})
        for (const std::uint32_t count : {1u, 2u, 63u, 64u, 65u, 200u}) {
            VertexMap map(mesh::map_wght, "m", 1);
            for (std::uint32_t point = begin; point < begin + count; ++point)
                map.set(point, std::array{static_cast<float>(point)});
            map.set(begin + count + 70, std::array{-1.0f});
            EXPECT_EQ(map.size(), count + 1);
            for (std::uint32_t point = 0; point < begin + count + 70; ++point) {
                const bool in_run = point >= begin && point < begin + count;
                ASSERT_EQ(map.has(point), in_run) << begin << '+' << count << ": " << point;
                if (in_run) {
                    ASSERT_THAT(map.find(point), ElementsAre(static_cast<float>(point)));
                }
            }
            EXPECT_THAT(map.find(begin + count + 70), ElementsAre(-1.0f));
        }
}

TEST(VertexMap, WorksAcrossTheEdgesOfItsWords)
{
    VertexMap map(mesh::map_wght, "m", 1);
    for (const std::uint32_t point : {128u, 0u, 63u, 64u, 127u})
        map.set(point, std::array{static_cast<float>(point)});
    EXPECT_THAT(map.values(), ElementsAre(0.f, 63.f, 64.f, 127.f, 128.f));
    map.truncate(128);
    EXPECT_THAT(map.values(), ElementsAre(0.f, 63.f, 64.f, 127.f));
    map.truncate(64);
    EXPECT_THAT(map.values(), ElementsAre(0.f, 63.f));
    map.set(64, std::array{5.f});
    EXPECT_THAT(map.values(), ElementsAre(0.f, 63.f, 5.f));
}

TEST(VertexMap, OneOfDimensionZeroIsASetOfPoints)
{
    VertexMap map(mesh::fourcc("PICK"), "chosen", 0);
    map.set(3, {});
    map.set(90, {});
    EXPECT_TRUE(map.has(3));
    EXPECT_FALSE(map.has(4));
    EXPECT_EQ(map.size(), 2u);
    map.erase(3);
    EXPECT_FALSE(map.has(3));
    EXPECT_EQ(map.size(), 1u);
}

TEST(VertexMap, TakingEverythingAwayLeavesAnEmptyMap)
{
    VertexMap map(mesh::map_wght, "m", 1);
    map.erase(5);
    map.set(70, std::array{1.f});
    map.erase(70);
    EXPECT_EQ(map.size(), 0u);
    map.set(70, std::array{2.f});
    map.truncate(0);
    EXPECT_EQ(map.size(), 0u);
    EXPECT_FALSE(map.has(70));
    map.set(1, std::array{3.f});
    EXPECT_THAT(map.find(1), ElementsAre(3.f));
}

} // namespace
