// SPDX-License-Identifier: MIT
#include "mesh/polygons.h"

#include <array>
#include <stdexcept>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using mesh::fourcc;
using mesh::no_tag;
using mesh::polygon_curv;
using mesh::polygon_face;
using mesh::Polygons;
using mesh::tag_surf;
using testing::ElementsAre;

constexpr mesh::FourCC part = fourcc("PART");
constexpr mesh::FourCC colour = fourcc("COLR");

void add(Polygons& polygons, mesh::FourCC type, std::vector<std::uint32_t> points)
{
    polygons.add(type, points);
}

TEST(Polygons, KeepTypesAndPointsInOrder)
{
    Polygons polygons;
    add(polygons, polygon_face, {0, 1, 2});
    add(polygons, polygon_curv, {});
    add(polygons, polygon_face, {2, 1, 0, 2});
    ASSERT_EQ(polygons.size(), 3u);
    EXPECT_EQ(polygons.corner_count(), 7u);
    EXPECT_THAT(polygons.points(0), ElementsAre(0u, 1u, 2u));
    EXPECT_THAT(polygons.points(1), ElementsAre());
    EXPECT_THAT(polygons.points(2), ElementsAre(2u, 1u, 0u, 2u));
    EXPECT_EQ(polygons.type(0), polygon_face);
    EXPECT_EQ(polygons.type(1), polygon_curv);
    EXPECT_EQ(polygons.type(2), polygon_face);
}

TEST(Polygons, ANewOneHasNoTagsNoFlagsAndIsNotSelected)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    polygons.set_tag(part, 0, 4);
    add(polygons, polygon_face, {0});
    EXPECT_EQ(polygons.surface(1), no_tag);
    EXPECT_EQ(polygons.tag(tag_surf, 1), no_tag);
    EXPECT_EQ(polygons.tag(part, 1), no_tag);
    EXPECT_EQ(polygons.tag(colour, 1), no_tag);
    EXPECT_EQ(polygons.flags(1), 0);
    EXPECT_FALSE(polygons.selected(1));
}

TEST(Polygons, ASurfaceIsATagOfItsKind)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    polygons.set_tag(tag_surf, 0, 3);
    EXPECT_EQ(polygons.surface(0), 3u);
    polygons.set_surface(0, 5);
    EXPECT_EQ(polygons.tag(tag_surf, 0), 5u);
    EXPECT_THAT(polygons.other_tag_kinds(), ElementsAre());
}

TEST(Polygons, OtherKindsOfTagsAreListedByFirstAppearance)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    add(polygons, polygon_face, {0});
    polygons.set_tag(part, 1, 7);
    polygons.set_tag(colour, 0, 8);
    polygons.set_tag(part, 0, 9);
    EXPECT_THAT(polygons.other_tag_kinds(), ElementsAre(part, colour));
    EXPECT_EQ(polygons.tag(part, 0), 9u);
    EXPECT_EQ(polygons.tag(part, 1), 7u);
    EXPECT_EQ(polygons.tag(colour, 1), no_tag);
}

TEST(Polygons, SelectingOneLeavesTheOthers)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    add(polygons, polygon_face, {0});
    polygons.select(1, true);
    EXPECT_FALSE(polygons.selected(0));
    EXPECT_TRUE(polygons.selected(1));
    polygons.select(1, false);
    EXPECT_FALSE(polygons.selected(1));
}

TEST(Polygons, CopiedAttributesAreTagsAndFlagsOfTheSameType)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    add(polygons, polygon_face, {0});
    add(polygons, polygon_curv, {0});
    polygons.set_surface(0, 2);
    polygons.set_tag(part, 0, 3);
    polygons.set_flags(0, 9);
    polygons.select(0, true);
    polygons.copy_attributes(0, 1);
    polygons.copy_attributes(0, 2);
    EXPECT_EQ(polygons.surface(1), 2u);
    EXPECT_EQ(polygons.tag(part, 1), 3u);
    EXPECT_EQ(polygons.flags(1), 9);
    EXPECT_FALSE(polygons.selected(1));
    EXPECT_EQ(polygons.surface(2), 2u);
    EXPECT_EQ(polygons.flags(2), 0);
}

TEST(Polygons, AttributesComeFromAnotherLayerToo)
{
    Polygons source;
    add(source, polygon_curv, {0});
    add(source, polygon_face, {0});
    source.set_tag(part, 0, 1);
    source.set_tag(colour, 1, 4);
    source.set_surface(1, 6);
    source.set_flags(1, 5);
    Polygons target;
    add(target, polygon_face, {0});
    target.copy_attributes(source, 1, 0);
    EXPECT_EQ(target.surface(0), 6u);
    EXPECT_EQ(target.tag(colour, 0), 4u);
    EXPECT_EQ(target.flags(0), 5);
    EXPECT_THAT(target.other_tag_kinds(), ElementsAre(colour)) << "only what the polygon has";
}

TEST(Polygons, TruncatingKeepsTheFirstOnes)
{
    Polygons polygons;
    add(polygons, polygon_face, {0, 1});
    add(polygons, polygon_face, {2, 3, 4});
    polygons.set_tag(part, 1, 3);
    polygons.truncate(5);
    EXPECT_EQ(polygons.size(), 2u);
    polygons.truncate(1);
    EXPECT_EQ(polygons.size(), 1u);
    EXPECT_EQ(polygons.corner_count(), 2u);
    EXPECT_THAT(polygons.points(0), ElementsAre(0u, 1u));
    add(polygons, polygon_face, {9});
    EXPECT_EQ(polygons.tag(part, 1), no_tag) << "no tag outlives its polygon";
}

TEST(Polygons, AMarkForgetsKindsOfTagsThatCameLater)
{
    Polygons polygons;
    add(polygons, polygon_face, {0});
    polygons.set_tag(part, 0, 1);
    const Polygons::Mark mark = polygons.mark();
    add(polygons, fourcc("BONE"), {0});
    polygons.set_tag(colour, 1, 2);
    polygons.truncate(mark);
    EXPECT_EQ(polygons.size(), 1u);
    EXPECT_THAT(polygons.other_tag_kinds(), ElementsAre(part));
    add(polygons, polygon_curv, {0});
    EXPECT_EQ(polygons.type(1), polygon_curv);
    EXPECT_EQ(polygons.type(0), polygon_face);
}

TEST(Polygons, HoldAtMost65536Types)
{
    Polygons polygons;
    for (mesh::FourCC type = 0; type < 65'536; ++type)
        add(polygons, type, {0});
    EXPECT_THROW(add(polygons, 70'000, {0}), std::length_error);
    EXPECT_EQ(polygons.size(), 65'536u);
    EXPECT_EQ(polygons.corner_count(), 65'536u);
    add(polygons, 12'345, {0});
    EXPECT_EQ(polygons.type(65'536), 12'345u);
}

RC_GTEST_PROP(PolygonsLaw, AnyPolygonsComeBackAsTheyWereAdded,
              (const std::vector<std::vector<std::uint32_t>>& faces))
{
    Polygons polygons;
    polygons.reserve(faces.size() / 2, 3);
    std::size_t corners = 0;
    for (std::size_t i = 0; i < faces.size(); ++i) {
        polygons.add(i % 3 == 0 ? polygon_curv : polygon_face, faces[i]);
        corners += faces[i].size();
    }
    RC_ASSERT(polygons.size() == faces.size());
    RC_ASSERT(polygons.corner_count() == corners);
    for (std::size_t i = 0; i < faces.size(); ++i) {
        const auto points = polygons.points(i);
        RC_ASSERT(std::vector(points.begin(), points.end()) == faces[i]);
        RC_ASSERT(polygons.type(i) == (i % 3 == 0 ? polygon_curv : polygon_face));
    }
    const auto begin = *rc::gen::inRange<std::size_t>(0, faces.size() + 1);
    const auto end = *rc::gen::inRange<std::size_t>(begin, faces.size() + 1);
    std::vector<std::uint32_t> expected;
    for (std::size_t i = begin; i < end; ++i)
        expected.insert(expected.end(), faces[i].begin(), faces[i].end());
    const auto found = polygons.corners(begin, end);
    RC_ASSERT(std::vector(found.begin(), found.end()) == expected);
}

} // namespace
