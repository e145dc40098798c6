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

/// A scene, and which layer of the document each of its layers is.
struct ShownScene {
    std::shared_ptr<const picture::Scene> scene;
    std::vector<std::size_t> document_layers;
};

/// What is drawn, besides the scene.
struct DrawingOptions {
    picture::Camera camera;
    int width = 1; ///< pixels
    int height = 1;
    double scale = 1.0; ///< pixels of the picture for one of the desktop's units
    picture::Backdrop backdrop = {};
    bool wireframe = false;
    bool grid = true;
    bool axes = true;
};

/// Draws the document in a thread of its own: a coarse picture at once, and finer ones as long as
/// nothing changes. All of it is called on the window's thread.
///
/// Work that reads the document (`show_document`, `show_map`, `show_ghost`) goes on beside the
/// window; until it is through, `reading` is true, and nobody may change the document.
class Tracer : public QObject {
    Q_OBJECT

public:
    explicit Tracer(QObject* parent);
    ~Tracer() override;

    /// Makes the scene anew from these layers of the document, which must stay as it is while it is
    /// read. The map that is shown is read anew, too; the ghost is taken away.
    void show_document(const mesh::Document& document, std::vector<std::size_t> layers,
                       std::vector<mesh::SurfaceLook> looks);
    /// Forgets the document, whose layers are about to go, but goes on drawing the scene that was
    /// made from it. To be called while nothing is read; `show_document` has to follow.
    void forget_document() noexcept;
    /// Colours by a vertex map; an empty name: by the surfaces.
    void show_map(const std::string& name);
    /// Shows a preview as a ghost; null: none.
    void show_ghost(std::shared_ptr<const PreviewMesh> mesh);
    /// A ghost that was asked for and is not shown yet is not wanted any more.
    void abandon_ghost();
    void show_selection(std::shared_ptr<const picture::PolygonMarks> marks);
    void set_options(const DrawingOptions& options);
    /// Finds out how the camera sees everything, and tells it by `fitted`.
    void fit(const picture::Camera& camera, double aspect);

    /// Whether a scene is being made, or posted work is waiting or running.
    [[nodiscard]] bool reading() const;
    /// Runs something on the drawing thread, in line with the reading; it counts as such.
    void post(std::function<void()> work);

    /// Stops the drawing, and returns true when the thread is at rest; false while it reads.
    [[nodiscard]] bool pause();
    /// Lets it go on.
    void resume();

    /// The scene that was made last; its pointer is null before the first one.
    [[nodiscard]] ShownScene shown() const;
    /// How things are shown at the moment, for a picture of their own.
    [[nodiscard]] picture::Look look() const;
    /// Finished passes over what is asked for at the moment.
    [[nodiscard]] unsigned passes() const;

signals:
    /// A better picture of what is asked for, in the picture's own pixels.
    void image_ready(const QImage& image);
    /// What `fit` found: the camera, moved so that it sees everything.
    void fitted(const picture::Camera& camera);
    /// The ghost that was asked for last is shown.
    void ghost_ready();
    /// A scene was made anew.
    void scene_ready();
    /// No reading is left to be done.
    void at_rest();

private:
    /// What a drawing is made of. Whoever changes it raises `wanted_`.
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
    std::size_t jobs_left_ = 0; ///< waiting and running
    Drawing drawing_;
    unsigned long long wanted_ = 0; ///< number of the drawing that is asked for
    unsigned long long drawn_ = 0;  ///< number of the drawing that is being made
    bool paused_ = false;
    bool resting_ = false; ///< the thread waits
    bool ending_ = false;
    std::atomic<bool> cancel_{false};
    std::atomic<unsigned> passes_{0};

    // What the jobs work on: of the document for the most part, which stays as it is meanwhile.
    const mesh::Document* document_ = nullptr;
    std::vector<picture::SceneLayer> layers_;
    std::vector<mesh::SurfaceLook> looks_;
    std::string map_;

    /// Ends the making of the ghost that was asked for last. Of the window's thread.
    std::shared_ptr<std::atomic<bool>> ghost_cancel_ = std::make_shared<std::atomic<bool>>(false);

    std::unique_ptr<picture::Progressive> picture_; ///< of the drawing thread alone
    std::thread thread_;
};

} // namespace desktop
