// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "mesh/document.h"
#include "mesh/surface_look.h"
#include "picture/image/image.h"
#include "picture/render/look.h"
#include "picture/scene/scene.h"
#include "picture/view/camera.h"

/// A document of one layer, made point by point.
class Model {
public:
    Model() { document.layers.emplace_back(); }

    mesh::Layer& layer() { return document.layers[0]; }

    std::uint32_t point(double x, double y, double z)
    {
        layer().points.push_back({x, y, z});
        return static_cast<std::uint32_t>(layer().points.size() - 1);
    }

    void polygon(std::span<const std::uint32_t> points, const std::string& surface = "",
                 mesh::FourCC type = mesh::polygon_face);
    void polygon(std::initializer_list<std::uint32_t> points, const std::string& surface = "",
                 mesh::FourCC type = mesh::polygon_face)
    {
        polygon(std::span<const std::uint32_t>(points.begin(), points.size()), surface, type);
    }

    /// A polygon of new points.
    void face(const std::vector<mesh::Vec3>& places, const std::string& surface = "",
              mesh::FourCC type = mesh::polygon_face);

    /// A level square that faces up, around (x, y, z).
    void floor(double x, double y, double z, double half, const std::string& surface = "");

    /// A closed box.
    void box(const mesh::Vec3& low, const mesh::Vec3& high, const std::string& surface = "");

    void look(const std::string& name, float red, float green, float blue, double smoothing = 0.0)
    {
        looks.push_back({name, red, green, blue, smoothing});
    }

    [[nodiscard]] std::vector<picture::SceneLayer> scene_layers() const
    {
        return picture::all_layers(document, looks);
    }
    [[nodiscard]] std::shared_ptr<const picture::Scene> scene() const
    {
        return std::make_shared<const picture::Scene>(scene_layers());
    }

    mesh::Document document;
    std::vector<mesh::SurfaceLook> looks;
};

/// A ground with a box and a ball on it, the ball smooth.
Model box_and_ball();

/// The picture of a scene after some passes.
picture::Image picture_of(const std::shared_ptr<const picture::Scene>& scene,
                          const picture::Camera& camera, int width, int height, unsigned passes,
                          const picture::Look& look = {});

/// The same, framed.
picture::Image framed_picture(const Model& model, int width, int height, unsigned passes,
                              const picture::Look& look = {});

/// Mean of red, green and blue of a square of pixels around a place, 0 to 255.
double brightness(const picture::Image& image, int x, int y, int reach = 2);

/// How many pixels differ from the backdrop of an empty picture.
int drawn_pixels(const picture::Image& image);

/// The mean and the largest difference of two pictures of one size, over red, green and blue.
struct Difference {
    double mean = 0.0;
    int largest = 0;
};
Difference difference(const picture::Image& a, const picture::Image& b);
