// SPDX-License-Identifier: MIT
#include "picture/scene/scene.h"

#include "picture/scene/traced_scene.h"

namespace picture {

std::vector<SceneLayer> all_layers(const mesh::Document& document,
                                   std::span<const mesh::SurfaceLook> looks)
{
    std::vector<SceneLayer> layers;
    layers.reserve(document.layers.size());
    for (const mesh::Layer& layer : document.layers)
        layers.push_back({&layer, &document.tags, looks});
    return layers;
}

Scene::Scene(std::span<const SceneLayer> layers, const std::atomic<bool>* cancel)
    : traced_(std::make_unique<const TracedScene>(layers, cancel))
{}

Scene::~Scene() = default;

const std::optional<mesh::Bounds>& Scene::bounds() const noexcept { return traced_->bounds(); }

Camera Scene::framed(Camera camera, double aspect) const noexcept
{
    Framing framing(camera, aspect);
    for (const ScenePart& part : traced_->parts())
        for (std::size_t i = 0; i < part.layer_points; ++i)
            framing.add(traced_->world_place(part.points[i]));
    framing.apply(camera);
    return camera;
}

std::size_t Scene::triangle_count() const noexcept
{
    std::size_t count = 0;
    for (const ScenePart& part : traced_->parts())
        count += part.triangles.size();
    return count;
}

} // namespace picture
