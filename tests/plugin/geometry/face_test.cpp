// SPDX-License-Identifier: MIT
#include <cmath>
#include <initializer_list>
#include <type_traits>

#include "plugin/geometry/LW6-face.h"
#include "plugin/geometry/area.h"
#include "tests/plugin/module_test.h"

namespace dastrel {
namespace {

void fill(face6_typ& face, std::initializer_list<XYZ6_typ> points)
{
    face.num_points = static_cast<int>(points.size());
    face.points = new XYZ6_typ[points.size()];
    int i = 0;
    for (const XYZ6_typ& point : points)
        face.points[i++] = point;
}

double area_of(std::initializer_list<XYZ6_typ> points)
{
    face6_typ face;
    fill(face, points);
    return calc_poly_area(0, &face);
}

TEST(Face, IsEmptyAfterConstruction)
{
    face6_typ face;
    EXPECT_EQ(face.num_points, 0);
    EXPECT_EQ(face.points, nullptr);
    expect_equal(face.normal, 0, 0, 0);
    EXPECT_EQ(face.polID, nullptr);
    EXPECT_EQ(calc_poly_area(0, &face), 0.0);
    static_assert(std::has_virtual_destructor_v<face6_typ>);
}

TEST(Face, MovesItsPointsAlone)
{
    face6_typ face;
    fill(face, {{1, 2, 3}, {0.1, 0.2, 0.3}});
    face.normal = XYZ6_typ(0, 1, 0);
    face.polID = support::RecordingHost::polygon_id(4);
    face.move(XYZ6_typ(0, 0, 0));
    expect_equal(face.points[0], 1, 2, 3);
    expect_equal(face.points[1], 0.1, 0.2, 0.3);
    face.move(XYZ6_typ(10, 20, 30));
    expect_equal(face.points[0], 11, 22, 33);
    expect_equal(face.points[1], 10.1, 20.2, 30.3);
    expect_equal(face.normal, 0, 1, 0);
    EXPECT_EQ(face.polID, support::RecordingHost::polygon_id(4));
}

TEST(Area, OfOneOrTwoPointsIsZero)
{
    EXPECT_EQ(area_of({{1, 2, 3}}), 0.0);
    EXPECT_EQ(area_of({{1, 2, 3}, {4, 5, 6}}), 0.0);
}

TEST(Area, OfTheUnitSquareIsOne)
{
    EXPECT_NEAR(area_of({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), 1.0, 1e-15);
}

TEST(Area, OfTheTriangleWithSides345IsSix)
{
    EXPECT_EQ(area_of({{0, 0, 0}, {3, 0, 0}, {3, 4, 0}}), 6.0);
    EXPECT_EQ(calc_triangle_area({0, 0, 0}, {3, 0, 0}, {3, 4, 0}), 6.0);
}

TEST(Area, OfPointsOnALineIsZeroOrNoNumber)
{
    EXPECT_EQ(area_of({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}), 0.0);
    bool seen_no_number = false;
    for (int i = 1; i < 300; ++i) {
        const XYZ6_typ step(0.1 * i, 0.3, 0.7 / i);
        const double area = calc_triangle_area(XYZ6_typ(), step * 0.3, step);
        EXPECT_TRUE(std::isnan(area) || area < 1e-7 * (1 + step.len() * step.len())) << area;
        seen_no_number = seen_no_number || std::isnan(area);
    }
    EXPECT_TRUE(seen_no_number) << "no guard is put under the root";
}

TEST(Area, MultipliesInItsOwnNesting)
{
    for (int i = 1; i < 100; ++i) { // enough for one that shows another nesting
        const XYZ6_typ a(0.1, 0.2 * i, 0.3);
        const XYZ6_typ b(1.7, -0.4, 0.9 / i);
        const XYZ6_typ c(0.6 * i, 2.2, -1.1);
        const double s1 = a.calc_distance(b);
        const double s2 = b.calc_distance(c);
        const double s3 = c.calc_distance(a);
        const double h = (s1 + s2 + s3) * 0.5;
        ASSERT_EQ(calc_triangle_area(a, b, c), std::sqrt((h - s3) * ((h - s2) * ((h - s1) * h))));
    }
}

TEST(Area, IsAFanFromTheFirstPointAlsoForAConcavePolygon)
{
    // An arrow head: the fan from the first point overlaps itself.
    const XYZ6_typ tip(0, 0, 0);
    const XYZ6_typ left(-1, -2, 0);
    const XYZ6_typ notch(-0.5, 1, 0);
    const XYZ6_typ right(1, -2, 0);
    const double expected =
        calc_triangle_area(tip, left, notch) + calc_triangle_area(tip, notch, right);
    EXPECT_EQ(area_of({tip, left, notch, right}), expected);
}

TEST(Area, SumsRecordsInOrder)
{
    face6_typ faces[3];
    fill(faces[0], {{0, 0, 0}, {3, 0, 0}, {3, 4, 0}});
    fill(faces[2], {{0, 0, 0}, {1e9, 0, 0}, {1e9, 1, 0}});
    EXPECT_EQ(calc_area(faces, 0), 0.0);
    EXPECT_EQ(calc_area(faces, 2), 6.0);
    EXPECT_EQ(calc_area(faces, 3), (0.0 + 6.0 + 0.0) + calc_poly_area(2, faces));
    EXPECT_EQ(calc_poly_area(1, faces), 0.0);
}

} // namespace
} // namespace dastrel
