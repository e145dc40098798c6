// SPDX-License-Identifier: MIT
#include "cli/pictures/picture_maker.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <unistd.h>

#include "cli/errors.h"
#include "cli/files.h"
#include "formats/errors.h"
#include "formats/file_writer.h"
#include "formats/surface_looks.h"
#include "picture/image/png.h"
#include "picture/maps/legend.h"
#include "picture/render/progressive.h"
#include "settings/nearest.h"

namespace cli {

namespace {

/// The layers of all documents, and the looks that they point to.
struct Shown {
    explicit Shown(std::span<const mesh::Document> documents)
    {
        looks.reserve(documents.size());
        for (const mesh::Document& document : documents) {
            looks.push_back(formats::surface_looks(document));
            const auto own = picture::all_layers(document, looks.back());
            layers.insert(layers.end(), own.begin(), own.end());
        }
    }

    std::vector<std::vector<mesh::SurfaceLook>> looks;
    std::vector<picture::SceneLayer> layers;
};

std::shared_ptr<const picture::MapValues> find_map(const Shown& shown, const std::string& name)
{
    auto map = picture::read_map(shown.layers, name);
    if (map)
        return map;
    const std::vector<std::string> names = picture::map_names(shown.layers);
    throw UsageError(fmt::format("--color-by: there is no weight map '{}'; {}", name,
                                 names.empty()
                                     ? "there is none at all"
                                     : fmt::format("there are '{}'{}", fmt::join(names, "', '"),
                                                   settings::did_you_mean(name, names))));
}

std::shared_ptr<const picture::Scene> make_scene(std::span<const picture::SceneLayer> layers,
                                                 const std::string& name)
{
    try {
        return std::make_shared<const picture::Scene>(layers);
    } catch (const picture::TracerError& error) {
        throw Failure(ExitStatus::host, fmt::format("{}: {}", name, error.what()), {name, {}});
    }
}

picture::View view_of(const picture::Scene& scene, const PictureRequest& request)
{
    picture::Camera camera;
    camera.look_from(request.view);
    camera.azimuth_deg = request.azimuth_deg.value_or(camera.azimuth_deg);
    camera.elevation_deg = request.elevation_deg.value_or(camera.elevation_deg);
    camera = scene.framed(camera, static_cast<double>(request.width) / request.height);
    camera.height /= request.zoom;
    return {camera, request.width, request.height};
}

picture::Image trace(const std::shared_ptr<const picture::Scene>& scene,
                     const PictureRequest& request, picture::Look look, Console& console)
{
    const auto map = look.map;
    picture::Progressive progressive(scene, view_of(*scene, request), std::move(look));
    picture::Work work;
    if (console.shows_progress())
        work.progress = [&](std::size_t done, std::size_t tiles) {
            const double passes =
                progressive.passes() + static_cast<double>(done) / static_cast<double>(tiles);
            console.show_progress("tracing", passes / request.samples);
        };
    while (progressive.passes() < request.samples)
        progressive.add_pass(work);
    console.clear_progress();
    picture::Image image = progressive.image();
    if (map)
        picture::draw_legend(image, *map);
    return image;
}

void write_picture(const std::vector<std::byte>& bytes, const std::string& name)
{
    if (name == standard_stream) {
        write_stdout({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        return;
    }
    try {
        formats::FileWriter writer(name);
        writer.write(bytes);
        writer.commit();
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what(), {name, {}});
    }
}

} // namespace

void validate_picture_output(const std::string& name)
{
    if (name == standard_stream) {
        if (::isatty(STDOUT_FILENO) == 1)
            throw Failure(ExitStatus::output, "standard output is a terminal, and a picture is no "
                                              "text; redirect it or name a file");
        return;
    }
    std::string ending = std::filesystem::path(name).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (!ending.empty() && ending != ".png")
        throw Failure(
            ExitStatus::output,
            fmt::format("{}: is in a format that is not written; only PNG pictures (.png) are",
                        name),
            {name, {}});
    try {
        formats::check_output_path(name);
    } catch (const formats::FileError& error) {
        throw Failure(ExitStatus::output, error.what(), {name, {}});
    }
}

std::size_t make_picture(std::span<const mesh::Document> documents, const PictureRequest& request,
                         const std::string& name, Console& console)
{
    const Shown shown(documents);
    picture::Look look;
    look.wireframe = request.wireframe;
    if (!request.color_by.empty())
        look.map = find_map(shown, request.color_by);
    console.show_progress("sorting polygons");
    const auto scene = make_scene(shown.layers, name);
    write_picture(picture::encode_png(trace(scene, request, std::move(look), console)), name);
    return scene->triangle_count();
}

} // namespace cli
