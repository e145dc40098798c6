// SPDX-License-Identifier: MIT
// The window: files, layers, looking, selecting, running, undoing, saving.
#include <algorithm>
#include <array>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDropEvent>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>

#include "desktop/panel/control_slot.h"
#include "desktop/panel/form_view.h"
#include "desktop/panel/number_field.h"
#include "desktop/window/main_window.h"
#include "desktop/window/progress_box.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "mesh/bounds.h"
#include "tests/desktop/support.h"
#include "tests/support/mesh_compare.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::PanelDialog;
using modeler::LayerRole;
using support::example;
using support::wait_until;

const mesh::Document& document(MainWindow& window)
{
    return window.workspace().session().document();
}

QWidget* field(PanelDialog& dialog, const QString& label)
{
    auto* const slot = dialog.findChild<QWidget*>(label);
    return dynamic_cast<desktop::ControlSlot*>(slot)->editor().widget();
}

void press_ok(PanelDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }

class WindowTest : public QObject {
    Q_OBJECT

private:
    /// Opens terrain and tree and waits for the picture.
    void open_forest()
    {
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(wait_until([this] {
            return !window_->tracer().reading() && window_->tracer().passes() > 0 &&
                   window_->viewport().is_fitted();
        }));
    }

    /// Waits until the camera is where the last action sent it.
    void wait_for_camera()
    {
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QTest::qWait(20);
    }

    /// Where the middle of a polygon of the first layer is in the viewport.
    [[nodiscard]] QPoint place_of(std::size_t polygon)
    {
        const mesh::Layer& layer = document(*window_).layers[0];
        mesh::Vec3 middle;
        const auto corners = layer.polygons.points(polygon);
        for (const std::uint32_t corner : corners) {
            middle.x += layer.points[corner].x / static_cast<double>(corners.size());
            middle.y += layer.points[corner].y / static_cast<double>(corners.size());
            middle.z += layer.points[corner].z / static_cast<double>(corners.size());
        }
        const auto at = window_->viewport().view().project(middle);
        const double scale = window_->viewport().devicePixelRatioF();
        return QPointF(at->x / scale, at->y / scale).toPoint();
    }

    [[nodiscard]] std::vector<std::size_t> selected()
    {
        std::vector<std::size_t> found;
        const mesh::Polygons& polygons = document(*window_).layers[0].polygons;
        for (std::size_t i = 0; i < polygons.size(); ++i)
            if (polygons.selected(i))
                found.push_back(i);
        return found;
    }

    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;

private Q_SLOTS:
    void init()
    {
        QSettings().setValue("own layer", false); // clones go into the ground
        window_ = std::make_unique<MainWindow>();
        window_->resize(900, 600);
        window_->load_module();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() { window_.reset(); }

    void refuses_a_clock_that_is_none_before_anything_is_run()
    {
        const QByteArray before = qgetenv("DASTREL_CLOCK");
        qputenv("DASTREL_CLOCK", "yesterday");
        MainWindow window;
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        window.load_module();
        QCOMPARE(message.trimmed(), QString("DASTREL_CLOCK: 'yesterday' is not a whole number; it "
                                            "counts seconds, such as 1790000000"));
        QVERIFY(window.commands().empty());
        QVERIFY(window.workspace().module() == nullptr);
        // The same as for the command line, and told as the run sees it.
        qputenv("DASTREL_CLOCK", " +077");
        window.load_module();
        QCOMPARE(window.workspace().clock(), std::string("77"));
        QCOMPARE(qgetenv("DASTREL_CLOCK"), QByteArray("77"));
        QVERIFY(!window.commands().empty());
        qputenv("DASTREL_CLOCK", before);
    }

    void makes_one_scene_of_several_files()
    {
        open_forest();
        QCOMPARE(document(*window_).layers.size(), std::size_t{2});
        const QTreeWidget& layers = window_->lists().layers();
        QCOMPARE(layers.topLevelItemCount(), 2);
        for (int i = 0; i < 2; ++i) {
            const mesh::Layer& layer = document(*window_).layers[static_cast<std::size_t>(i)];
            const QLocale numbers;
            QCOMPARE(layers.topLevelItem(i)->text(2),
                     numbers.toString(static_cast<qulonglong>(layer.points.size())));
            QCOMPARE(layers.topLevelItem(i)->text(3),
                     numbers.toString(static_cast<qulonglong>(layer.polygons.size())));
        }
        const auto role = [&](int row) {
            return qobject_cast<QComboBox*>(layers.itemWidget(layers.topLevelItem(row), 1))
                ->currentText();
        };
        QCOMPARE(role(0), "foreground");
        QCOMPARE(role(1), "background");
        QVERIFY(window_->windowTitle().startsWith("terrain.lwo + tree.lwo"));
        QVERIFY(!window_->isWindowModified()); // each is in its file
        QVERIFY(QSettings().value("recent").toStringList().contains(
            QString::fromStdString(example("tree.lwo").string())));
    }

    void takes_dropped_files()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(example("terrain.lwo").string())),
                      QUrl::fromLocalFile(QString::fromStdString(example("tree.lwo").string()))});
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(window_.get(), &drop);
        QVERIFY(wait_until([this] { return document(*window_).layers.size() == 2; }));
        QCOMPARE(window_->workspace().session().roles()[1], LayerRole::background);
    }

    void says_which_file_cannot_be_read_and_why()
    {
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        QVERIFY(!window_->open({example("terrain.lwo"), folder_.filePath("none.lwo").toStdString(),
                                example("make_examples.py")}));
        QVERIFY2(message.contains("none.lwo") && message.contains("No such file"),
                 qPrintable(message));
        QVERIFY2(message.contains("make_examples.py"), qPrintable(message));
        QCOMPARE(document(*window_).layers.size(), std::size_t{1}); // the good one is there
    }

    void greys_the_command_without_foreground_polygons()
    {
        QAction* const command = window_->commands().at(0);
        QCOMPARE(command->text(), "Dastrel");
        QVERIFY(!command->isEnabled());
        open_forest();
        QVERIFY(command->isEnabled());
        window_->set_role(0, LayerRole::background);
        QVERIFY(!command->isEnabled());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        window_->set_role(0, LayerRole::foreground);
        QVERIFY(command->isEnabled());
    }

    void shows_the_commands_own_refusals()
    {
        open_forest();
        window_->set_role(1, LayerRole::hidden);
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        window_->commands().at(0)->trigger();
        QCOMPARE(message,
                 "Need some geometry in the background layer(s) to clone\n"
                 "No layer with polygons has the role background, so there is nothing to "
                 "clone: choose the layer that is to be cloned, such as layer 2 'tree', in "
                 "the list of layers and press Ctrl+2.");
        QVERIFY(!window_->workspace().session().can_undo());
    }

    void runs_undoes_redoes_saves_and_reads_again()
    {
        open_forest();
        const mesh::Document before = support::copy_of(document(*window_));
        QAction* const undo = window_->action(ActionId::undo);
        QAction* const redo = window_->action(ActionId::redo);
        QVERIFY(!undo->isEnabled());
        support::run_command(*window_, [](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "12");
            press_ok(dialog);
        });
        const mesh::Document after = support::copy_of(document(*window_));
        QCOMPARE(after.layers[0].points.size(),
                 before.layers[0].points.size() + 12 * before.layers[1].points.size());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QVERIFY(undo->isEnabled() && !redo->isEnabled());
        undo->trigger();
        QCOMPARE(support::first_difference(document(*window_), before), std::string());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QVERIFY(!undo->isEnabled() && redo->isEnabled());
        redo->trigger();
        QCOMPARE(support::first_difference(document(*window_), after), std::string());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));

        const std::filesystem::path file = folder_.filePath("forest.lwo").toStdString();
        QVERIFY(window_->save_to(file, false));
        QVERIFY(!window_->isWindowModified());
        QCOMPARE(window_->windowTitle(), "forest.lwo[*] - Dastrel Modeler");
        undo->trigger();
        QVERIFY(window_->isWindowModified());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        redo->trigger(); // back at what was saved
        QVERIFY(!window_->isWindowModified());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));

        const std::string bytes = support::bytes_of(file);
        QVERIFY(window_->open({file}));
        QCOMPARE(document(*window_).layers[0].points.size(), after.layers[0].points.size());
        const std::filesystem::path again = folder_.filePath("again.lwo").toStdString();
        QVERIFY(window_->save_to(again, false));
        QCOMPARE(support::bytes_of(again), bytes);
    }

    void tells_why_a_file_cannot_be_written()
    {
        open_forest();
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        support::run_command(*window_, press_ok);
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QVERIFY(!window_->save_to("/nowhere/forest.lwo", false));
        QVERIFY2(message.contains("/nowhere"), qPrintable(message));
        QVERIFY(window_->isWindowModified());
    }

    void changes_nothing_on_cancel_and_remembers_the_values_of_the_last_ok()
    {
        open_forest();
        const mesh::Document before = support::copy_of(document(*window_));
        support::run_command(*window_, [](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "3");
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QCOMPARE(support::first_difference(document(*window_), before), std::string());
        QVERIFY(!window_->workspace().session().can_undo());
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        const auto shown_clones = [this](const QString& typed, Qt::Key end) {
            QString shown;
            support::run_command(*window_, [&](PanelDialog& dialog) {
                shown =
                    qobject_cast<desktop::NumberField*>(field(dialog, "Number of Clones"))->text();
                support::type(field(dialog, "Number of Clones"), typed);
                QTest::keyClick(&dialog, end);
            });
            return shown;
        };
        QCOMPARE(shown_clones("5", Qt::Key_Return), "30");
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QCOMPARE(shown_clones("9", Qt::Key_Escape), "5");
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QCOMPARE(shown_clones("1", Qt::Key_Escape), "5");
    }

    void refuses_a_run_that_no_file_can_hold_and_keeps_the_panel_open()
    {
        open_forest();
        QString message;
        bool stayed = false;
        support::run_command(*window_, [&](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "2000000000");
            press_ok(dialog);
            stayed = dialog.isVisible();
            message = dialog.message();
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QVERIFY(stayed);
        QVERIFY2(message.startsWith("2000000000 clones of") &&
                     message.contains("make fewer clones"),
                 qPrintable(message));
        QVERIFY(!window_->workspace().session().can_undo());
    }

    void refuses_clones_that_bring_their_layer_too_many_types_of_polygons()
    {
        const std::filesystem::path ground = folder_.filePath("types.lwo").toStdString();
        mesh::Document many = formats::read_lwo2_file(example("terrain.lwo"), {});
        mesh::Polygons& polygons = many.layers[0].polygons;
        constexpr std::array<std::uint32_t, 3> corners{0, 1, 2};
        for (mesh::FourCC i = 1; i < 256; ++i)
            polygons.add(mesh::fourcc("T000") + i, corners);
        formats::write_lwo2_file(many, ground);
        const std::filesystem::path model = folder_.filePath("cage.lwo").toStdString();
        mesh::Document cage = formats::read_lwo2_file(example("tree.lwo"), {});
        cage.layers[0].polygons.add(mesh::fourcc("SUBD"), corners);
        formats::write_lwo2_file(cage, model);
        QVERIFY(window_->open({ground, model}));
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QString message;
        bool stayed = false;
        support::run_command(*window_, [&](PanelDialog& dialog) {
            press_ok(dialog);
            stayed = dialog.isVisible();
            message = dialog.message();
            dialog.findChild<QCheckBox*>("own layer")->click(); // which has room for them
            press_ok(dialog);
        });
        QVERIFY2(message.contains("257 types of polygons together"), qPrintable(message));
        QVERIFY(stayed);
        QCOMPARE(document(*window_).layers.size(), std::size_t{3});
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
    }

    void asks_about_unsaved_changes()
    {
        open_forest();
        support::run_command(*window_, press_ok);
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QString message;
        support::answer_box(QMessageBox::Cancel, message);
        QVERIFY(!window_->close());
        QVERIFY(message.contains("terrain.lwo + tree.lwo"));
        QVERIFY(window_->isVisible());
        support::answer_box(QMessageBox::Discard, message);
        QVERIFY(window_->close());
    }

    void selects_with_the_mouse()
    {
        open_forest();
        window_->action(ActionId::view_top)->trigger();
        wait_for_camera();
        auto* const view = &window_->viewport();
        QTest::mouseClick(view, Qt::LeftButton, {}, place_of(40));
        QCOMPARE(selected(), std::vector<std::size_t>{40});
        QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, place_of(50));
        QCOMPARE(selected(), (std::vector<std::size_t>{40, 50}));
        QTest::mouseClick(view, Qt::LeftButton, Qt::ShiftModifier, place_of(50));
        QCOMPARE(selected(), (std::vector<std::size_t>{40, 50}));
        QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, place_of(40));
        QTest::mouseClick(view, Qt::LeftButton, Qt::ControlModifier, place_of(41));
        QCOMPARE(selected(), (std::vector<std::size_t>{41, 50}));
        QTest::mouseClick(view, Qt::LeftButton, {}, place_of(60));
        QCOMPARE(selected(), std::vector<std::size_t>{60});
        QTest::mouseClick(view, Qt::LeftButton, {}, QPoint(1, 1)); // past the ground
        QVERIFY(selected().empty());

        // A rectangle from the middle of one polygon to that of another takes both.
        const auto drag = [&](std::size_t from, std::size_t to, Qt::KeyboardModifiers modifiers) {
            QTest::mousePress(view, Qt::LeftButton, modifiers, place_of(from));
            QTest::mouseMove(view, place_of(to));
            QTest::mouseRelease(view, Qt::LeftButton, modifiers, place_of(to));
            QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
            QTest::qWait(20);
        };
        drag(40, 43, {});
        for (const std::size_t polygon : {40U, 43U})
            QVERIFY(document(*window_).layers[0].polygons.selected(polygon));
        const std::size_t count = selected().size();
        QVERIFY(count < document(*window_).layers[0].polygons.size() / 4);
        drag(40, 43, Qt::ControlModifier);
        QVERIFY(selected().size() < count);
        QVERIFY(!document(*window_).layers[0].polygons.selected(40));
    }

    void selects_by_the_menu()
    {
        open_forest();
        const std::size_t all = document(*window_).layers[0].polygons.size();
        window_->action(ActionId::select_all)->trigger();
        QCOMPARE(selected().size(), all);
        window_->action(ActionId::select_invert)->trigger();
        QVERIFY(selected().empty());
        window_->select_at(place_of(7), {});
        window_->action(ActionId::select_none)->trigger();
        QVERIFY(selected().empty());
        QTreeWidget& surfaces = window_->lists().surfaces();
        surfaces.setCurrentItem(surfaces.topLevelItem(0));
        const std::string name = window_->lists().chosen_surface();
        window_->action(ActionId::select_surface)->trigger();
        std::size_t with_it = 0;
        for (std::size_t i = 0; i < all; ++i)
            with_it +=
                document(*window_).tags[document(*window_).layers[0].polygons.surface(i)] == name
                    ? 1
                    : 0;
        QCOMPARE(selected().size(), with_it);
        QVERIFY(with_it > 0);
        // Polygons of the background are not selected with it.
        for (std::size_t i = 0; i < document(*window_).layers[1].polygons.size(); ++i)
            QVERIFY(!document(*window_).layers[1].polygons.selected(i));
    }

    void puts_clones_on_selected_polygons_alone()
    {
        open_forest();
        window_->action(ActionId::view_top)->trigger();
        wait_for_camera();
        window_->select_at(place_of(40), {});
        const std::size_t before = document(*window_).layers[0].points.size();
        support::run_command(*window_, press_ok);
        const mesh::Layer& ground = document(*window_).layers[0];
        // The roots of the clones lie within the polygon; the tree itself is a few metres wide.
        double left = 1e9;
        double right = -1e9;
        for (const std::uint32_t corner : ground.polygons.points(40)) {
            left = std::min(left, ground.points[corner].x);
            right = std::max(right, ground.points[corner].x);
        }
        const auto tree = mesh::layer_bounds(document(*window_).layers[1]);
        const double reach = 1.5 * (tree->max.y - tree->min.y);
        for (std::size_t i = before; i < ground.points.size(); ++i) {
            QVERIFY(ground.points[i].x > left - reach);
            QVERIFY(ground.points[i].x < right + reach);
        }
        QVERIFY(ground.points.size() > before);
    }

    void shows_what_is_selected_and_colours_by_maps()
    {
        open_forest();
        const auto settled_image = [this] {
            if (!wait_until([this] {
                    return !window_->tracer().reading() && window_->tracer().passes() >= 2;
                }))
                throw std::runtime_error("the picture does not settle");
            QTest::qWait(20);
            return window_->viewport().image();
        };
        const auto differs = [](const QImage& a, const QImage& b) {
            long long different = 0;
            for (int y = 0; y < std::min(a.height(), b.height()); ++y)
                for (int x = 0; x < std::min(a.width(), b.width()); ++x) {
                    const QColor p = a.pixelColor(x, y);
                    const QColor q = b.pixelColor(x, y);
                    different += std::abs(p.red() - q.red()) + std::abs(p.green() - q.green()) +
                                             std::abs(p.blue() - q.blue()) >
                                         60
                                     ? 1
                                     : 0;
                }
            return different;
        };
        // A change of the scene reaches the drawing thread some time later, so a settled picture
        // may still be the one before it.
        const auto becomes = [&](const std::function<bool(const QImage&)>& expected) {
            return wait_until([&] { return expected(settled_image()); });
        };
        const QImage plain = settled_image();
        // Two passes leave grain: about 1,100 pixels differ from those of a finished picture.
        const auto is_plain = [&](const QImage& image) { return differs(plain, image) < 3000; };
        const auto is_other = [&](const QImage& image) { return differs(plain, image) > 10000; };
        window_->action(ActionId::select_all)->trigger();
        QVERIFY(becomes(is_other));
        window_->action(ActionId::select_none)->trigger();
        QVERIFY(becomes(is_plain));
        QTreeWidget& maps = window_->lists().maps();
        const QList<QTreeWidgetItem*> density = maps.findItems("Density", Qt::MatchExactly);
        QCOMPARE(density.size(), 1);
        maps.setCurrentItem(density[0]);
        QVERIFY(becomes(is_other));
        maps.setCurrentItem(maps.topLevelItem(0));
        QVERIFY(becomes(is_plain));
    }

    void looks_around()
    {
        open_forest();
        wait_for_camera();
        auto& view = window_->viewport();
        const picture::Camera first = view.camera();
        QTest::keyClick(&view, Qt::Key_Left);
        QVERIFY(view.camera().azimuth_deg != first.azimuth_deg);
        QTest::mousePress(&view, Qt::RightButton, {}, {100, 100});
        QTest::mouseMove(&view, {140, 120});
        QTest::mouseRelease(&view, Qt::RightButton, {}, {140, 120});
        const picture::Camera turned = view.camera();
        QVERIFY(turned.elevation_deg != first.elevation_deg);
        QTest::mousePress(&view, Qt::MiddleButton, {}, {100, 100});
        QTest::mouseMove(&view, {140, 120});
        QTest::mouseRelease(&view, Qt::MiddleButton, {}, {140, 120});
        QCOMPARE(view.camera().azimuth_deg, turned.azimuth_deg);
        QVERIFY(!(view.camera().target == turned.target));
        // What is under the pointer stays there when it zooms.
        const QPointF at(600, 200);
        const picture::Ray before = view.view().ray(at.x(), at.y());
        const double distance = view.camera().distance();
        const mesh::Vec3 place{before.origin.x + before.direction.x * distance,
                               before.origin.y + before.direction.y * distance,
                               before.origin.z + before.direction.z * distance};
        action_zoom(at);
        QVERIFY(view.camera().height < turned.height);
        const auto now = view.view().project(place);
        QVERIFY(std::abs(now->x - at.x()) < 3.0 && std::abs(now->y - at.y()) < 3.0);
        window_->action(ActionId::fit)->trigger();
        for (const ActionId id :
             {ActionId::view_front, ActionId::view_back, ActionId::view_left, ActionId::view_right,
              ActionId::view_top, ActionId::view_bottom, ActionId::view_perspective}) {
            const picture::Camera last = view.camera();
            window_->action(id)->trigger();
            wait_for_camera();
            QVERIFY(!(view.camera() == last));
        }
    }

    void shows_a_shortcut_for_everything()
    {
        QStringList keys;
        for (const QAction* top : window_->menuBar()->actions())
            for (const QAction* action : top->menu()->actions()) {
                if (action->isSeparator() || action->menu() != nullptr)
                    continue;
                QVERIFY2(!action->shortcut().isEmpty(), qPrintable(action->text()));
                QVERIFY2(!action->toolTip().isEmpty(), qPrintable(action->text()));
                keys.append(action->shortcut().toString());
            }
        QVERIFY(keys.size() > 30);
        QCOMPARE(QSet<QString>(keys.begin(), keys.end()).size(), keys.size());
    }

    void drops_a_run_that_is_cancelled()
    {
        open_forest();
        const mesh::Document before = support::copy_of(document(*window_));
        QTimer watch;
        bool pressed = false;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* const box = window_->findChild<QDialog*>("progress");
            if (box != nullptr && box->isVisible() && !pressed) {
                pressed = true;
                QTest::keyClick(box, Qt::Key_Escape);
            }
        });
        support::run_command(*window_, [&](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "20000");
            watch.start(1);
            press_ok(dialog);
        });
        QVERIFY(pressed);
        QCOMPARE(support::first_difference(document(*window_), before), std::string());
        QVERIFY(!window_->workspace().session().can_undo());
    }

private:
    void action_zoom(const QPointF& at) { window_->viewport().zoom(0.5, at); }
};

} // namespace

int main(int count, char** arguments)
{
    WindowTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "window_test.moc"
