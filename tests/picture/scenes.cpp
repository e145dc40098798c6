// SPDX-License-Identifier: MIT
#include "tests/picture/scenes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "picture/render/progressive.h"

void Model::polygon(std::span<const std::uint32_t> points, const std::string& surface,
                    mesh::FourCC type)
{
    mesh::Polygons& polygons = layer().polygons;
    polygons.add(type, points);
    if (!surface.empty())
        polygons.set_surface(polygons.size() - 1, document.tags.intern(surface));
}

void Model::face(const std::vector<mesh::Vec3>& places, const std::string& surface,
                 mesh::FourCC type)
{
    std::vector<std::uint32_t> points;
    for (const mesh::Vec3& place : places)
        points.push_back(point(place.x, place.y, place.z));
    polygon(points, surface, type);
}

void Model::floor(double x, double y, double z, double half, const std::string& surface)
{
    face({{x - half, y, z - half},
          {x - half, y, z + half},
          {x + half, y, z + half},
          {x + half, y, z - half}},
         surface);
}

void Model::box(const mesh::Vec3& low, const mesh::Vec3& high, const std::string& surface)
{
    std::array<std::uint32_t, 8> corners{};
    for (unsigned i = 0; i < 8; ++i)
        corners.at(i) = point((i & 1U) != 0 ? high.x : low.x, (i & 2U) != 0 ? high.y : low.y,
                              (i & 4U) != 0 ? high.z : low.z);
    polygon({corners[0], corners[2], corners[3], corners[1]}, surface);
    polygon({corners[4], corners[5], corners[7], corners[6]}, surface);
    polygon({corners[0], corners[4], corners[6], corners[2]}, surface);
    polygon({corners[1], corners[3], corners[7], corners[5]}, surface);
    polygon({corners[2], corners[6], corners[7], corners[3]}, surface);
    polygon({corners[0], corners[1], corners[5], corners[4]}, surface);
}

Model box_and_ball()
{
    constexpr int rows = 8;
    constexpr int columns = 12;
    constexpr double radius = 1.0;
    Model model;
    model.look("Ground", 0.6F, 0.6F, 0.55F);
    model.look("Red", 0.8F, 0.2F, 0.15F);
    model.look("Blue", 0.2F, 0.35F, 0.8F, 1.5);
    model.floor(0.0, 0.0, 0.0, 4.0, "Ground");
    model.box({-2.2, 0.0, -1.0}, {-0.4, 1.8, 1.0}, "Red");
    std::vector<std::uint32_t> points;
    for (int row = 0; row <= rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const double polar = std::numbers::pi * row / rows;
            const double around = 2.0 * std::numbers::pi * column / columns;
            points.push_back(model.point(1.6 + radius * std::sin(polar) * std::cos(around),
                                         radius + radius * std::cos(polar),
                                         radius * std::sin(polar) * std::sin(around)));
        }
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < columns; ++column) {
            const std::size_t next = (column + 1) % columns;
            model.polygon({points[row * columns + column], points[row * columns + next],
                           points[(row + 1) * columns + next],
                           points[(row + 1) * columns + column]},
                          "Blue");
        }
    return model;
}

picture::Image picture_of(const std::shared_ptr<const picture::Scene>& scene,
                          const picture::Camera& camera, int width, int height, unsigned passes,
                          const picture::Look& look)
{
    picture::Progressive progressive(scene, picture::View(camera, width, height), look);
    while (progressive.passes() < passes)
        progressive.add_pass();
    return progressive.image();
}

picture::Image framed_picture(const Model& model, int width, int height, unsigned passes,
                              const picture::Look& look)
{
    const auto scene = model.scene();
    const picture::Camera camera =
        scene->framed(picture::Camera(), static_cast<double>(width) / height);
    return picture_of(scene, camera, width, height, passes, look);
}

double brightness(const picture::Image& image, int x, int y, int reach)
{
    double sum = 0.0;
    int count = 0;
    for (int row = y - reach; row <= y + reach; ++row)
        for (int column = x - reach; column <= x + reach; ++column) {
            const std::uint8_t* const pixel = image.at(column, row);
            sum += pixel[0] + pixel[1] + pixel[2];
            count += 3;
        }
    return sum / count;
}

int drawn_pixels(const picture::Image& image)
{
    const picture::Image empty =
        picture_of(Model().scene(), picture::Camera(), image.width, image.height, 0);
    int count = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const std::uint8_t* const a = image.at(x, y);
            const std::uint8_t* const b = empty.at(x, y);
            int apart = 0;
            for (int i = 0; i < 3; ++i)
                apart = std::max(apart, std::abs(a[i] - b[i]));
            count += apart > 12 ? 1 : 0;
        }
    return count;
}

Difference difference(const picture::Image& a, const picture::Image& b)
{
    Difference result;
    for (std::size_t i = 0; i < a.rgba.size(); ++i) {
        const int apart = std::abs(a.rgba[i] - b.rgba[i]);
        result.mean += apart;
        result.largest = std::max(result.largest, apart);
    }
    result.mean /= static_cast<double>(a.rgba.size()) * 0.75; // cover never differs
    return result;
}
