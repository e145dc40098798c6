// SPDX-License-Identifier: MIT
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "picture/view/camera.h"
#include "picture/view/vectors.h"
#include "picture/view/view.h"

namespace {

using picture::Camera;
using picture::length;
using picture::Projection;
using picture::StandardView;
using picture::Vec3;
using picture::View;
using picture::operator+;
using picture::operator-;
using picture::operator*;

struct Sight {
    const char* name;
    StandardView view;
    Vec3 right;
    Vec3 up;
    Vec3 forward;
};

class StandardViewTest : public testing::TestWithParam<Sight> {};

TEST_P(StandardViewTest, LooksExactlyAlongItsAxis)
{
    Camera camera;
    camera.look_from(GetParam().view);
    EXPECT_EQ(camera.projection, Projection::orthographic);
    const picture::Basis basis = camera.basis();
    EXPECT_EQ(basis.right, GetParam().right);
    EXPECT_EQ(basis.up, GetParam().up);
    EXPECT_EQ(basis.forward, GetParam().forward);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Views, StandardViewTest, testing::Values(
    Sight{"back",   StandardView::back,   { 1, 0,  0}, {0, 1,  0}, { 0,  0,  1}},
    Sight{"front",  StandardView::front,  {-1, 0,  0}, {0, 1,  0}, { 0,  0, -1}},
    Sight{"right",  StandardView::right,  { 0, 0,  1}, {0, 1,  0}, {-1,  0,  0}},
    Sight{"left",   StandardView::left,   { 0, 0, -1}, {0, 1,  0}, { 1,  0,  0}},
    Sight{"top",    StandardView::top,    { 1, 0,  0}, {0, 0,  1}, { 0, -1,  0}},
    Sight{"bottom", StandardView::bottom, { 1, 0,  0}, {0, 0, -1}, { 0,  1,  0}}),
    [](const auto& tested) { return std::string(tested.param.name); });
// clang-format on

std::vector<Vec3> corners(const Vec3& low, const Vec3& high)
{
    std::vector<Vec3> points;
    for (unsigned i = 0; i < 8; ++i)
        points.push_back({(i & 1U) != 0 ? high.x : low.x, (i & 2U) != 0 ? high.y : low.y,
                          (i & 4U) != 0 ? high.z : low.z});
    return points;
}

/// Frames the points and returns how much of the picture's width and height they take.
void expect_framed(Camera camera, const std::vector<Vec3>& points, int width, int height)
{
    camera.frame(points, static_cast<double>(width) / height);
    const View view(camera, width, height);
    double left = width;
    double right = 0.0;
    double top = height;
    double bottom = 0.0;
    for (const Vec3& point : points) {
        const auto seen = view.project(point);
        ASSERT_TRUE(seen);
        left = std::min(left, seen->x);
        right = std::max(right, seen->x);
        top = std::min(top, seen->y);
        bottom = std::max(bottom, seen->y);
    }
    EXPECT_GE(left, 0.0);
    EXPECT_LE(right, width);
    EXPECT_GE(top, 0.0);
    EXPECT_LE(bottom, height);
    // The direction that is full decides, and is centred; the other one nearly so.
    const double wide = (right - left) / width;
    const double high = (bottom - top) / height;
    EXPECT_NEAR(std::max(wide, high), 1.0 / 1.1, 1e-6);
    EXPECT_NEAR((left + right) / 2.0, width / 2.0, width * (wide > high ? 1e-6 : 0.05));
    EXPECT_NEAR((top + bottom) / 2.0, height / 2.0, height * (high > wide ? 1e-6 : 0.05));
}

TEST(CameraFrame, JustHoldsAllPointsInTheMiddle)
{
    for (const double size : {1e-6, 1.0, 1e6})
        for (const double azimuth : {0.0, 37.0, 200.0})
            for (const double elevation : {-80.0, 0.0, 25.0, 90.0})
                for (const auto projection : {Projection::perspective, Projection::orthographic}) {
                    SCOPED_TRACE(testing::Message() << size << ' ' << azimuth << ' ' << elevation);
                    Camera camera;
                    camera.projection = projection;
                    camera.azimuth_deg = azimuth;
                    camera.elevation_deg = elevation;
                    const Vec3 low{3.0 * size, -size, 5.0 * size};
                    const Vec3 high{7.0 * size, size, 6.0 * size};
                    expect_framed(camera, corners(low, high), 640, 360);
                    expect_framed(camera, corners(low, high), 200, 300);
                }
}

TEST(CameraFrame, PassesOverWhatIsNoNumberAndKeepsTheCameraWithoutPoints)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    Camera camera;
    const Camera before = camera;
    camera.frame(std::vector<Vec3>{}, 1.0);
    EXPECT_EQ(camera, before);
    camera.frame(std::vector<Vec3>{{nan, 0.0, 0.0}}, 1.0);
    EXPECT_EQ(camera, before);
    camera.frame(std::vector<Vec3>{{nan, 0.0, 0.0}, {1.0, 2.0, 3.0}}, 1.0);
    EXPECT_EQ(camera.target, (Vec3{1.0, 2.0, 3.0}));
    EXPECT_EQ(camera.height, 1.0);
}

TEST(View, RaysLeadBackToTheirPixels)
{
    for (const auto projection : {Projection::perspective, Projection::orthographic}) {
        Camera camera;
        camera.projection = projection;
        camera.target = {10.0, -4.0, 3.0};
        const View view(camera, 320, 200);
        for (const double x : {0.0, 17.5, 160.0, 319.0}) {
            const picture::Ray ray = view.ray(x, 33.0);
            EXPECT_NEAR(length(ray.direction), 1.0, 1e-12);
            const auto seen = view.project(ray.origin + ray.direction * 7.0);
            ASSERT_TRUE(seen);
            EXPECT_NEAR(seen->x, x, 1e-9);
            EXPECT_NEAR(seen->y, 33.0, 1e-9);
        }
    }
}

TEST(View, DoesNotShowWhatIsBehindTheViewer)
{
    const Camera camera;
    const View view(camera, 100, 100);
    const Vec3 behind = view.eye() - view.basis().forward;
    EXPECT_FALSE(view.project(behind));
    EXPECT_TRUE(view.project(camera.target));
}

TEST(View, PixelsAreAsLargeAsPointsThatFarApart)
{
    Camera camera;
    camera.height = 3.0;
    const View view(camera, 300, 300);
    EXPECT_NEAR(view.pixel_size(camera.distance()), 0.01, 1e-12);
}

} // namespace
