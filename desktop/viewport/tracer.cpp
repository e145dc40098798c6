// SPDX-License-Identifier: MIT
#include "desktop/viewport/tracer.h"

#include <exception>
#include <utility>

#include "picture/maps/legend.h"
#include "picture/maps/map_values.h"
#include "picture/render/progressive.h"

namespace desktop {

namespace {

/// Pixel sizes of the first and second coarse picture.
constexpr int coarse_step = 8;
constexpr int fine_step = 3;
/// After this number of passes no visible change is left.
constexpr unsigned most_passes = 64;

std::shared_ptr<const picture::Scene> ghost_scene(const PreviewMesh& mesh,
                                                  const mesh::Document& document,
                                                  const std::vector<mesh::SurfaceLook>& looks,
                                                  const std::atomic<bool>& cancel)
{
    std::vector<picture::SceneLayer> layers;
    for (const mesh::Layer& layer : mesh.layers)
        if (layer.polygons.size() > 0)
            layers.push_back({.layer = &layer, .tags = &document.tags, .looks = looks});
    return layers.empty() ? nullptr : std::make_shared<const picture::Scene>(layers, &cancel);
}

} // namespace

Tracer::Tracer(QObject* parent) : QObject(parent), thread_([this] { work(); }) {}

Tracer::~Tracer()
{
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
        cancel_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Tracer::change(const std::function<void(Drawing&)>& edit)
{
    {
        const std::lock_guard lock(mutex_);
        edit(drawing_);
        ++wanted_;
        cancel_ = true;
    }
    changed_.notify_all();
}

void Tracer::post(std::function<void()> work)
{
    {
        const std::lock_guard lock(mutex_);
        jobs_.push_back(std::move(work));
        ++jobs_left_;
        cancel_ = true;
    }
    changed_.notify_all();
}

void Tracer::show_document(const mesh::Document& document, std::vector<std::size_t> layers,
                           std::vector<mesh::SurfaceLook> looks)
{
    post([this, &document, layers = std::move(layers), looks = std::move(looks)]() mutable {
        document_ = &document;
        looks_ = std::move(looks);
        layers_.clear();
        for (const std::size_t layer : layers)
            layers_.push_back(
                {.layer = &document.layers[layer], .tags = &document.tags, .looks = looks_});
        auto scene = std::make_shared<const picture::Scene>(layers_);
        auto map = map_.empty() ? nullptr : picture::read_map(layers_, map_);
        change([&](Drawing& drawing) {
            drawing.shown = {std::move(scene), std::move(layers)};
            drawing.look.map = std::move(map);
            drawing.look.ghost = nullptr;
            drawing.look.selected = nullptr;
        });
        emit scene_ready();
    });
}

void Tracer::forget_document() noexcept
{
    const std::lock_guard lock(mutex_); // synchronises with the data of the tasks
    document_ = nullptr;
    layers_.clear();
}

void Tracer::show_map(const std::string& name)
{
    post([this, name] {
        map_ = name;
        auto map = name.empty() ? nullptr : picture::read_map(layers_, name);
        change([&](Drawing& drawing) { drawing.look.map = std::move(map); });
    });
}

void Tracer::show_ghost(std::shared_ptr<const PreviewMesh> mesh)
{
    abandon_ghost();
    if (mesh == nullptr) {
        change([](Drawing& drawing) { drawing.look.ghost = nullptr; });
        return;
    }
    ghost_cancel_ = std::make_shared<std::atomic<bool>>(false);
    post([this, mesh = std::move(mesh), cancel = ghost_cancel_] {
        if (*cancel || document_ == nullptr)
            return;
        auto ghost = ghost_scene(*mesh, *document_, looks_, *cancel);
        change([&](Drawing& drawing) { drawing.look.ghost = std::move(ghost); });
        emit ghost_ready();
    });
}

void Tracer::abandon_ghost() { *ghost_cancel_ = true; }

void Tracer::show_selection(std::shared_ptr<const picture::PolygonMarks> marks)
{
    change([&](Drawing& drawing) { drawing.look.selected = std::move(marks); });
}

void Tracer::set_options(const DrawingOptions& options)
{
    change([&](Drawing& drawing) {
        drawing.options = options;
        drawing.look.backdrop = options.backdrop;
        drawing.look.wireframe = options.wireframe;
        drawing.look.grid = options.grid;
        drawing.look.axes = options.axes;
    });
}

void Tracer::fit(const picture::Camera& camera, double aspect)
{
    // On the drawing thread, since it visits every point.
    post([this, camera, aspect] {
        if (const auto scene = shown().scene)
            emit fitted(scene->framed(camera, aspect));
    });
}

bool Tracer::reading() const
{
    const std::lock_guard lock(mutex_);
    return jobs_left_ > 0;
}

bool Tracer::pause()
{
    std::unique_lock lock(mutex_);
    if (jobs_left_ > 0)
        return false;
    paused_ = true;
    cancel_ = true;
    changed_.wait(lock, [this] { return resting_; });
    return true;
}

void Tracer::resume()
{
    {
        const std::lock_guard lock(mutex_);
        paused_ = false;
    }
    changed_.notify_all();
}

ShownScene Tracer::shown() const
{
    const std::lock_guard lock(mutex_);
    return drawing_.shown;
}

unsigned Tracer::passes() const
{
    const std::lock_guard lock(mutex_);
    return wanted_ == drawn_ ? passes_.load() : 0;
}

picture::Look Tracer::look() const
{
    const std::lock_guard lock(mutex_);
    return drawing_.look;
}

void Tracer::work()
{
    std::unique_lock lock(mutex_);
    while (!ending_) {
        const bool to_draw = drawing_.shown.scene != nullptr && !paused_ &&
                             (wanted_ != drawn_ || passes_ < most_passes);
        if (!jobs_.empty()) {
            run_job(lock);
        } else if (to_draw) {
            draw(lock);
        } else {
            resting_ = true;
            changed_.notify_all();
            changed_.wait(lock);
            resting_ = false;
        }
    }
}

void Tracer::run_job(std::unique_lock<std::mutex>& lock)
{
    const std::function<void()> job = std::move(jobs_.front());
    jobs_.pop_front();
    lock.unlock();
    try {
        job();
    } catch (const std::exception&) {
        // Out of memory or cancelled; the previous picture stays.
    }
    lock.lock();
    --jobs_left_;
    if (jobs_left_ == 0)
        emit at_rest();
}

void Tracer::draw(std::unique_lock<std::mutex>& lock)
{
    const bool anew = wanted_ != drawn_;
    drawn_ = wanted_;
    cancel_ = false;
    if (anew)
        passes_ = 0;
    try {
        const Drawing drawing = drawing_;
        lock.unlock();
        if (anew)
            begin_picture(drawing);
        improve_picture(drawing);
    } catch (const std::exception&) {
        passes_ = most_passes; // out of memory; the picture stays as it is
    }
    if (!lock.owns_lock())
        lock.lock();
}

/// The first coarse picture is never cancelled; otherwise nothing would be shown while the camera
/// keeps moving.
void Tracer::begin_picture(const Drawing& drawing)
{
    const DrawingOptions& options = drawing.options;
    picture_ = std::make_unique<picture::Progressive>(
        drawing.shown.scene, picture::View(options.camera, options.width, options.height),
        drawing.look);
    picture_->coarse(coarse_step);
    publish(drawing);
}

void Tracer::improve_picture(const Drawing& drawing)
{
    picture::Work work;
    work.cancel = &cancel_;
    if (passes_ == 0) {
        if (!picture_->coarse(fine_step, work))
            return;
        publish(drawing);
    }
    if (!picture_->add_pass(work))
        return;
    passes_ = picture_->passes();
    publish(drawing);
}

void Tracer::publish(const Drawing& drawing)
{
    picture::Image image = picture_->image();
    if (drawing.look.map != nullptr)
        picture::draw_legend(image, *drawing.look.map, drawing.options.scale);
    QImage shown = QImage(image.rgba.data(), image.width, image.height, qsizetype{image.width} * 4,
                          QImage::Format_RGBA8888)
                       .copy();
    shown.setDevicePixelRatio(drawing.options.scale);
    emit image_ready(shown);
}

} // namespace desktop
