// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <QImage>
#include <QObject>

#include "desktop/preview/preview_mesh.h"
#include "mesh/document.h"
#include "mesh/surface_look.h"
#include "picture/render/look.h"
#include "picture/scene/scene.h"
#include "picture/view/view.h"

namespace picture {
class Progressive;
}

namespace desktop {

/// A scene and the document layer of each of its layers.
struct ShownScene {
    std::shared_ptr<const picture::Scene> scene;
    std::vector<std::size_t> document_layers;
};

/// Options of drawing the scene.
struct DrawingOptions {
    picture::Camera camera;
    int width = 1; ///< pixels
    int height = 1;
    double scale = 1.0; ///< device pixel ratio
    picture::Backdrop backdrop = {};
    bool wireframe = false;
    bool grid = true;
    bool axes = true;
};

/// Renders the document on its own thread: first a coarse picture, then refined ones until
/// something changes. All members are called on the main thread.
///
/// Tasks that read the document (`show_document`, `show_map`, `show_ghost`) run asynchronously.
/// While `reading` is true, the document must not be changed.
class Tracer : public QObject {
    Q_OBJECT

public:
    explicit Tracer(QObject* parent);
    ~Tracer() override;

    /// Rebuilds the scene from these layers of the document, asynchronously. Rereads the current
    /// map and removes the ghost.
    void show_document(const mesh::Document& document, std::vector<std::size_t> layers,
                       std::vector<mesh::SurfaceLook> looks);
    /// Drops the pointer to the document before its layers are removed; keeps drawing the existing
    /// scene. Call only while `reading` is false; a call of `show_document` must follow.
    void forget_document() noexcept;
    /// Colours by a vertex map; empty name: by surface.
    void show_map(const std::string& name);
    /// Shows a preview as a ghost; null: none.
    void show_ghost(std::shared_ptr<const PreviewMesh> mesh);
    /// Cancels a requested ghost that is not shown yet.
    void abandon_ghost();
    void show_selection(std::shared_ptr<const picture::PolygonMarks> marks);
    void set_options(const DrawingOptions& options);
    /// Computes the camera that frames everything and emits it with `fitted`.
    void fit(const picture::Camera& camera, double aspect);

    /// Whether a task that reads the document is queued or running.
    [[nodiscard]] bool reading() const;
    /// Queues a task on the drawing thread; it counts as reading.
    void post(std::function<void()> work);

    /// Pauses rendering. Returns true when the thread is idle; false, without pausing, while it
    /// reads the document.
    [[nodiscard]] bool pause();
    /// Resumes rendering.
    void resume();

    /// The last scene built; its pointer is null before the first one.
    [[nodiscard]] ShownScene shown() const;
    /// The current display options, for exporting a picture.
    [[nodiscard]] picture::Look look() const;
    /// Number of finished passes of the current picture.
    [[nodiscard]] unsigned passes() const;

signals:
    /// A new or refined picture, in device pixels.
    void image_ready(const QImage& image);
    /// Result of `fit`.
    void fitted(const picture::Camera& camera);
    /// The ghost requested last is shown.
    void ghost_ready();
    /// A scene was rebuilt.
    void scene_ready();
    /// No task that reads the document is left.
    void at_rest();

private:
    /// Input of the renderer. Each change increments `wanted_`.
    struct Drawing {
        ShownScene shown;
        picture::Look look;
        DrawingOptions options;
    };

    void change(const std::function<void(Drawing&)>& edit);
    void work();
    void run_job(std::unique_lock<std::mutex>& lock);
    void draw(std::unique_lock<std::mutex>& lock);
    void begin_picture(const Drawing& drawing);
    void improve_picture(const Drawing& drawing);
    void publish(const Drawing& drawing);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<std::function<void()>> jobs_;
    std::size_t jobs_left_ = 0; ///< queued and running tasks
    Drawing drawing_;
    unsigned long long wanted_ = 0; ///< version of `drawing_`
    unsigned long long drawn_ = 0;  ///< version being rendered
    bool paused_ = false;
    bool resting_ = false; ///< the thread is idle
    bool ending_ = false;
    std::atomic<bool> cancel_{false};
    std::atomic<unsigned> passes_{0};

    // Used by the tasks; mostly pointers into the document, which does not change meanwhile.
    const mesh::Document* document_ = nullptr;
    std::vector<picture::SceneLayer> layers_;
    std::vector<mesh::SurfaceLook> looks_;
    std::string map_;

    /// Cancels building the ghost requested last. Accessed on the main thread.
    std::shared_ptr<std::atomic<bool>> ghost_cancel_ = std::make_shared<std::atomic<bool>>(false);

    std::unique_ptr<picture::Progressive> picture_; ///< accessed on the drawing thread only
    std::thread thread_;
};

} // namespace desktop
