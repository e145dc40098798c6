// SPDX-License-Identifier: MIT
#include "desktop/window/main_window.h"

#include <exception>
#include <utility>

#include <QDockWidget>
#include <QLabel>
#include <QSettings>
#include <QStandardPaths>
#include <QStatusBar>
#include <QToolBar>

#include "desktop/message_box.h"
#include "desktop/text.h"
#include "desktop/window/background.h"
#include "desktop/window/run_size.h"
#include "desktop/window/scene_warnings.h"
#include "desktop/window/start_page.h"
#include "desktop/window/status_line.h"
#include "desktop/window/work_box.h"
#include "modeler/ground_slopes.h"

namespace desktop {

namespace {

constexpr auto own_layer_key = "own layer";

int first_lists_width(const QWidget& window)
{
    return window.fontMetrics().averageCharWidth() * 58;
}

std::filesystem::path preset_folder()
{
    return to_path(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation)) / "presets";
}

} // namespace

MainWindow::MainWindow()
    : tracer_(nullptr), preview_(nullptr), presets_(preset_folder()),
      front_end_(*this, preview_, presets_,
                 {.panel = [this](bool open, int width) { panel_is_open(open, width); },
                  .pause = [this] { return tracer_.pause(); },
                  .resume = [this] { tracer_.resume(); },
                  .problem =
                      [this](const modeler::FormPanel& panel) {
                          return run_size_problem(workspace_.session(), panel, own_layer_);
                      },
                  .is_of_scene =
                      [this](const std::filesystem::path& file) {
                          return !workspace_.open_file_at(file).empty();
                      },
                  .wants_own_layer = [] { return QSettings().value(own_layer_key, true).toBool(); },
                  .use_own_layer = [this](bool on) { use_own_layer(on); },
                  .ground_slopes =
                      [this] {
                          const auto slopes = modeler::ground_slopes(
                              workspace_.session().document(), workspace_.session().roles());
                          return slopes ? modeler::to_sentence(*slopes) : std::string();
                      },
                  .missing_model = [this] { return missing_model(workspace_); },
                  .warnings = [this] { return warnings_; }}),
      viewport_(new Viewport(tracer_, this)), start_page_(new StartPage(viewport_)),
      lists_(nullptr), status_(new StatusLine(this)), counts_(new QLabel(this))
{
    setObjectName("window");
    setAcceptDrops(true);
    setCentralWidget(viewport_);
    build_lists();
    build_start_page();
    build_actions();
    connect_actions();
    statusBar()->addWidget(status_, 1);
    statusBar()->addPermanentWidget(counts_);
    connect(&tracer_, &Tracer::scene_ready, this, [this] {
        if (std::exchange(fit_next_, false))
            viewport_->fit();
        show_selection();
    });
    connect(&tracer_, &Tracer::at_rest, this, &MainWindow::run_pending);
    go_on_.setSingleShot(true);
    go_on_.setInterval(0);
    connect(&go_on_, &QTimer::timeout, this, &MainWindow::run_pending);
    connect(&preview_, &Preview::shown, this, [this](std::shared_ptr<const PreviewMesh> mesh) {
        tracer_.show_ghost(std::move(mesh));
    });
    connect(&preview_, &Preview::outdated, &tracer_, &Tracer::abandon_ghost);
    connect(&tracer_, &Tracer::ghost_ready, &preview_, &Preview::mesh_is_drawn);
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
    resizeDocks({dock}, {first_lists_width(*this)}, Qt::Horizontal);
    connect(lists_, &SideLists::role_chosen, this, &MainWindow::set_role);
    connect(lists_, &SideLists::map_chosen, this,
            [this] { tracer_.show_map(lists_->chosen_map()); });
    connect(lists_, &SideLists::surface_activated, this,
            [this] { action(ActionId::select_surface)->trigger(); });
}

void MainWindow::build_start_page()
{
    connect(start_page_, &StartPage::open_asked, this, [this] { ask_and_open(false); });
    connect(start_page_, &StartPage::examples_asked, this, [this] {
        const std::filesystem::path folder = example_folder();
        run_when_idle([this, folder] { open({folder / "terrain.lwo", folder / "tree.lwo"}); });
    });
    connect(start_page_, &StartPage::recent_asked, this, [this](const QString& file) {
        run_when_idle([this, file] { open({to_path(file)}); });
    });
    start_page_->appear();
}

/// Updates lists and viewport after a change of the document.
void MainWindow::show_document()
{
    std::vector<std::size_t> layers;
    const std::vector<modeler::LayerRole>& roles = workspace_.session().roles();
    for (std::size_t i = 0; i < roles.size(); ++i)
        if (roles[i] != modeler::LayerRole::hidden)
            layers.push_back(i);
    tracer_.show_document(workspace_.session().document(), std::move(layers), workspace_.looks());
    lists_->show_scene(workspace_);
    if (workspace_.empty())
        start_page_->appear();
    else
        start_page_->hide();
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
    counts_->setText(tr("%1, %2, %3 selected")
                         .arg(counted_points(points), counted_polygons(polygons),
                              number_text(selected_count(workspace_.session()))));
    const std::string title = workspace_.title();
    setWindowTitle(
        (title.empty() ? tr("Dastrel Modeler")
                       : tr("%1[*] - Dastrel Modeler").arg(without_placeholder(printable(title)))));
    setWindowModified(workspace_.modified() && !title.empty());
    update_actions();
}

void MainWindow::show_message(const QString& text) { status_->show_message(text); }

QString MainWindow::message() const { return status_->message(); }

/// Runs work that changes the document as soon as it is not being read; usually at once.
void MainWindow::run_when_idle(std::function<void()> work)
{
    pending_.push_back(std::move(work));
    run_pending();
    if (!pending_.empty())
        statusBar()->showMessage(tr("Waiting for the picture to be prepared..."), 2000);
}

/// Work may start reading the document again; the rest of the queue then waits.
void MainWindow::run_pending()
{
    while (!pending_.empty() && !running_ && !background_running_ && !tracer_.reading()) {
        const std::function<void()> work = std::move(pending_.front());
        pending_.pop_front();
        work();
    }
}

/// Sets `background_running_` during its lifetime, while another thread works on the document.
struct MainWindow::BackgroundScope {
    explicit BackgroundScope(MainWindow& owner) : window(owner)
    {
        window.background_running_ = true;
    }
    BackgroundScope(const BackgroundScope&) = delete;
    BackgroundScope& operator=(const BackgroundScope&) = delete;
    ~BackgroundScope()
    {
        window.background_running_ = false;
        window.go_on_.start();
    }
    MainWindow& window;
};

void MainWindow::run_in_background(const std::function<void()>& work)
{
    const BackgroundScope scope(*this);
    desktop::run_in_background(work);
}

/// Pauses rendering meanwhile, to leave the processor to the work.
void MainWindow::run_with_progress(const QString& title, const QString& caption,
                                   const std::function<void(WorkState&)>& work)
{
    const BackgroundScope scope(*this);
    const bool quiet = tracer_.pause();
    const struct Resume {
        Tracer* tracer;
        ~Resume()
        {
            if (tracer != nullptr)
                tracer->resume();
        }
    } resume{quiet ? &tracer_ : nullptr};
    run_in_work_box(*this, title, caption, work);
}

void MainWindow::report(const std::string& problem)
{
    MessageBox(QMessageBox::Critical, tr("Dastrel Modeler"), to_qt(std::string_view(problem)), {},
               QMessageBox::Ok, this)
        .exec();
}

void MainWindow::report_failure(std::string_view what)
{
    if (std::exchange(reporting_failure_, true))
        return; // a message box is already open
    const struct ReportingScope {
        MainWindow& window;
        ~ReportingScope() { window.reporting_failure_ = false; }
    } end{*this};
    const bool can_save = !running_ && !panel_open_ && !background_running_ && !workspace_.empty();
    MessageBox box(QMessageBox::Critical, tr("Dastrel Modeler"), to_qt(what),
                   can_save ? tr("The scene is kept. Save it now, before you go on?")
                            : tr("What was begun is given up; the scene is kept."),
                   can_save ? QMessageBox::Save | QMessageBox::Ignore : QMessageBox::Ok, this);
    if (box.exec() == QMessageBox::Save)
        ask_and_save(false);
    if (can_save) // the exception may have interrupted an update of the viewport
        run_when_idle([this] { show_document(); });
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

/// Applies to the run whose panel is open, and is saved for the next one.
void MainWindow::use_own_layer(bool on)
{
    own_layer_ = on;
    QSettings().setValue(own_layer_key, on);
}

void MainWindow::panel_is_open(bool open, int panel_width)
{
    panel_open_ = open;
    lists_->setEnabled(!open);
    auto* const lists = findChild<QDockWidget*>("lists");
    if (open) {
        lists_width_ = lists->width();
        const bool whole = viewport_->shows_all();
        auto* const when_laid_out = new QTimer(this);
        connect(when_laid_out, &QTimer::timeout, this,
                [this, whole, when_laid_out, camera = viewport_->camera()] {
                    when_laid_out->deleteLater();
                    if (!panel_open_ || !whole || viewport_->shows_all())
                        return;
                    camera_before_panel_ = camera;
                    viewport_->fit();
                });
        when_laid_out->setSingleShot(true);
        when_laid_out->start(0);
    }
    hide_lists_for_panel(open ? panel_width : 0);
    if (!open) {
        resizeDocks({lists}, {lists_width_}, Qt::Horizontal); // the panel may have squeezed them
        if (camera_before_panel_ && viewport_->is_fitted())
            viewport_->set_camera(*camera_before_panel_);
        camera_before_panel_.reset();
        viewport_->setFocus(); // the panel had it
    }
    viewport_->set_selecting(!open);
    update_actions();
}

/// Disables the lists while the panel is open, and hides them if too little space for the viewport
/// would be left. Width 0: the panel was closed; restores them.
void MainWindow::hide_lists_for_panel(int panel_width)
{
    QAction* const show_lists = action(ActionId::show_lists);
    const bool shown = show_lists->isChecked();
    const bool hide = panel_width > 0 && shown && viewport_->width() - panel_width < width() / 3;
    if (hide || (lists_hidden_ && !shown))
        show_lists->trigger();
    lists_hidden_ = hide;
}

void MainWindow::reset_layout()
{
    auto* const bar = findChild<QToolBar*>("commands");
    addToolBar(Qt::TopToolBarArea, bar);
    bar->show();
    auto* const lists = findChild<QDockWidget*>("lists");
    lists->setFloating(false);
    addDockWidget(Qt::LeftDockWidgetArea, lists);
    if (!action(ActionId::show_lists)->isChecked() && !lists_hidden_)
        action(ActionId::show_lists)->trigger();
    lists_->reset_layout();
    lists_width_ = first_lists_width(*this);
    resizeDocks({lists}, {lists_width_}, Qt::Horizontal);
    front_end_.reset_panel_place();
}

} // namespace desktop
