// SPDX-License-Identifier: MIT
#include "desktop/window/main_window.h"

#include <exception>
#include <utility>

#include <QDockWidget>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>

#include "desktop/text.h"
#include "desktop/window/aside.h"

namespace desktop {

namespace {

std::filesystem::path preset_folder()
{
    return to_path(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)) / "presets";
}

} // namespace

MainWindow::MainWindow()
    : tracer_(nullptr), preview_(nullptr), presets_(preset_folder()),
      front_end_(*this, preview_, presets_,
                 {.panel = [this](bool open) { panel_is_open(open); },
                  .quieten = [this] { return tracer_.quieten(); },
                  .resume = [this] { tracer_.resume(); }}),
      viewport_(new Viewport(tracer_, this)), lists_(nullptr), counts_(new QLabel(this))
{
    setObjectName("window");
    setAcceptDrops(true);
    setCentralWidget(viewport_);
    build_lists();
    build_actions();
    connect_actions();
    statusBar()->addPermanentWidget(counts_);
    connect(&tracer_, &Tracer::scene_ready, this, [this] {
        if (std::exchange(fit_next_, false))
            viewport_->fit();
        show_selection();
    });
    connect(&tracer_, &Tracer::at_rest, this, &MainWindow::do_waiting);
    connect(&preview_, &Preview::shown, this, [this](std::shared_ptr<const PreviewMesh> mesh) {
        tracer_.show_ghost(std::move(mesh));
    });
    connect(this, &MainWindow::picked, this, &MainWindow::take_picked, Qt::QueuedConnection);
    connect(viewport_, &Viewport::clicked, this, &MainWindow::select_at);
    connect(viewport_, &Viewport::dragged, this, &MainWindow::select_in);
    resize(1200, 760);
    const QSettings settings;
    restoreGeometry(settings.value("geometry").toByteArray());
    restoreState(settings.value("state").toByteArray());
    update_state();
}

MainWindow::~MainWindow() = default;

void MainWindow::build_lists()
{
    auto* const dock = new QDockWidget(tr("Scene"), this);
    dock->setObjectName("lists");
    dock->setFeatures(QDockWidget::DockWidgetMovable);
    lists_ = new SideLists(dock);
    dock->setWidget(lists_);
    addDockWidget(Qt::LeftDockWidgetArea, dock);
    resizeDocks({dock}, {fontMetrics().averageCharWidth() * 58}, Qt::Horizontal);
    connect(lists_, &SideLists::role_chosen, this, &MainWindow::set_role);
    connect(lists_, &SideLists::map_chosen, this,
            [this] { tracer_.show_map(lists_->chosen_map()); });
    connect(lists_, &SideLists::surface_activated, this,
            [this] { action(ActionId::select_surface)->trigger(); });
}

/// After the document changed: lists and picture follow.
void MainWindow::show_document()
{
    std::vector<std::size_t> layers;
    const std::vector<modeler::LayerRole>& roles = workspace_.session().roles();
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] != modeler::LayerRole::hidden)
            layers.push_back(i);
    tracer_.show_document(workspace_.session().document(), std::move(layers), workspace_.looks());
    lists_->show_scene(workspace_);
    update_state();
}

void MainWindow::show_selection()
{
    tracer_.show_selection(selection_marks(workspace_.session(), tracer_.shown().document_layers));
    update_state();
}

void MainWindow::update_state()
{
    std::size_t points = 0;
    std::size_t polygons = 0;
    for (const mesh::Layer& layer : workspace_.session().document().layers) {
        points += layer.points.size();
        polygons += layer.polygons.size();
    }
    const QLocale numbers;
    const auto text = [&](std::size_t count) {
        return numbers.toString(static_cast<qulonglong>(count));
    };
    counts_->setText(
        tr("%1 points, %2 polygons, %3 selected")
            .arg(text(points), text(polygons), text(selected_count(workspace_.session()))));
    const std::string title = workspace_.title();
    setWindowTitle((title.empty()
                        ? tr("Dastrel Modeler")
                        : tr("%1[*] - Dastrel Modeler").arg(to_qt(std::string_view(title)))));
    setWindowModified(workspace_.modified() && !title.empty());
    update_actions();
}

/// Does what changes the document as soon as nobody reads it: mostly at once.
void MainWindow::when_free(std::function<void()> work)
{
    waiting_.push_back(std::move(work));
    do_waiting();
    if (!waiting_.empty())
        statusBar()->showMessage(tr("Waiting for the picture to be prepared..."), 2000);
}

/// One piece of work may have the document read anew, and then the next one waits again.
void MainWindow::do_waiting()
{
    while (!waiting_.empty() && !running_ && !aside_ && !tracer_.reading()) {
        const std::function<void()> work = std::move(waiting_.front());
        waiting_.pop_front();
        work();
    }
}

void MainWindow::do_aside(const std::function<void()>& work)
{
    aside_ = true;
    try {
        work_aside(work);
    } catch (...) {
        aside_ = false;
        throw;
    }
    aside_ = false;
}

void MainWindow::report(const std::string& problem)
{
    QMessageBox::critical(this, tr("Dastrel Modeler"), to_qt(std::string_view(problem)));
}

void MainWindow::load_module()
{
    try {
        workspace_.load_module();
        build_commands();
    } catch (const std::exception& error) {
        report(error.what());
    }
    update_state();
}

void MainWindow::panel_is_open(bool open)
{
    panel_open_ = open;
    lists_->setEnabled(!open);
    viewport_->set_selecting(!open);
    update_actions();
}

} // namespace desktop
