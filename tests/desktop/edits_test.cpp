// SPDX-License-Identifier: MIT
// What the window says of edits: names of boxes, what was undone, what is not saved, and under
// which name it would be.
#include <cstdint>
#include <limits>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolBar>

#include "desktop/panel/control_slot.h"
#include "desktop/text.h"
#include "desktop/window/main_window.h"
#include "formats/lwo2_reader.h"
#include "formats/lwo2_writer.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::PanelDialog;
using support::example;
using support::wait_until;

class EditsTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;

    void at_rest()
    {
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
    }

    void make_clones(const QString& count)
    {
        support::run_command(*window_, [&](PanelDialog& dialog) {
            auto* const slot = dialog.findChild<QWidget*>("Number of Clones");
            support::type(dynamic_cast<desktop::ControlSlot*>(slot)->editor().widget(), count);
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        at_rest();
    }

    [[nodiscard]] QString message() const { return window_->message(); }

    /// What a dialog that asks for a file proposes, which is then left.
    [[nodiscard]] QString proposed_by(ActionId action)
    {
        QString proposed;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr)
                return;
            watch.stop();
            proposed = dialog->selectedFiles().value(0);
            dialog->reject();
        });
        watch.start(std::chrono::milliseconds(1));
        window_->action(action)->trigger();
        return proposed;
    }

private Q_SLOTS:
    void init()
    {
        QSettings().clear();
        window_ = std::make_unique<MainWindow>();
        window_->resize(900, 600);
        window_->load_module();
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        at_rest();
    }
    void cleanup() { window_.reset(); }

    void names_every_progress_box_after_the_command()
    {
        QStringList titles;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            for (const QWidget* const box : QApplication::topLevelWidgets())
                if (box->objectName() == "progress" && box->isVisible())
                    titles.append(box->windowTitle());
        });
        watch.start(std::chrono::milliseconds(0));
        make_clones("5000");
        titles.removeDuplicates();
        QCOMPARE(titles, QStringList("Dastrel"));
    }

    void says_what_was_undone_and_redone()
    {
        const std::size_t tree = window_->workspace().session().document().layers[1].points.size();
        const auto points = [&](std::size_t clones) {
            return QLocale().toString(static_cast<qulonglong>(clones * tree)) + " points";
        };
        make_clones("12");
        make_clones("7");
        window_->action(ActionId::undo)->trigger();
        QVERIFY2(message().startsWith("Undone: Dastrel (" + points(7)), qPrintable(message()));
        at_rest();
        window_->action(ActionId::undo)->trigger();
        QVERIFY2(message().startsWith("Undone: Dastrel (" + points(12)), qPrintable(message()));
        at_rest();
        window_->action(ActionId::redo)->trigger();
        QVERIFY2(message().startsWith("Redone: Dastrel (" + points(12)), qPrintable(message()));
        at_rest();
    }

    void says_first_how_many_clones_there_are_and_where()
    {
        const mesh::Layer& tree = window_->workspace().session().document().layers[1];
        const QString size = desktop::counted_points(tree.points.size()) + ", " +
                             desktop::counted_polygons(tree.polygons.size()) + ", ";
        make_clones("1");
        QVERIFY2(message().startsWith("1 clone in layer 3 'clones of tree', " + size),
                 qPrintable(message()));
        make_clones("0");
        QVERIFY2(message().startsWith("Dastrel: nothing was added"), qPrintable(message()));
        make_clones("12");
        QVERIFY2(message().startsWith("12 clones in layer 4 '"), qPrintable(message()));
        QCOMPARE(desktop::counted_points(1), "1 point");
        QCOMPARE(desktop::counted_polygons(0), "0 polygons");
    }

    void keeps_what_it_says_until_the_next_operation()
    {
        const QString file = folder_.filePath("kept.lwo");
        QVERIFY(window_->save_to(file.toStdString(), false));
        QCOMPARE(message(), "Wrote " + file + ".");
        // The tip of an action stands there in between, and goes away again.
        QStatusTipEvent tip("a tip");
        QApplication::sendEvent(window_.get(), &tip);
        QCOMPARE(window_->statusBar()->currentMessage(), "a tip");
        QStatusTipEvent none((QString()));
        QApplication::sendEvent(window_.get(), &none);
        auto* const line = window_->findChild<QLabel*>("status");
        QVERIFY(line->isVisible());
        QCOMPARE(message(), "Wrote " + file + ".");
        // In a narrow window the line gives way to the counts, and its tip has all of it.
        window_->resize(420, 600);
        QVERIFY(wait_until([&] { return line->text() != message(); }));
        QVERIFY(line->toolTip().contains(file));
        window_->action(ActionId::close_scene)->trigger();
        QVERIFY(wait_until([this] { return message().isEmpty(); }));
    }

    void keeps_the_width_of_the_buttons()
    {
        const auto* const bar = window_->findChild<QToolBar*>("commands");
        const auto widths = [&] {
            QList<int> found;
            for (QAction* const action : bar->actions())
                found.append(bar->widgetForAction(action)->sizeHint().width());
            return found;
        };
        const QList<int> before = widths();
        make_clones("3");
        QCOMPARE(window_->action(ActionId::undo)->text(), "&Undo Dastrel");
        QCOMPARE(widths(), before);
        QCOMPARE(window_->action(ActionId::undo)->iconText(), "Undo");
    }

    void asks_for_nothing_to_be_saved_when_nothing_was_changed()
    {
        QVERIFY(!window_->isWindowModified()); // two files, as they are
        make_clones("3");
        QVERIFY(window_->isWindowModified());
        window_->action(ActionId::undo)->trigger();
        QVERIFY(!window_->isWindowModified());
        at_rest();
        window_->action(ActionId::redo)->trigger();
        at_rest();
        QVERIFY(window_->add({example("stone.lwo")}));
        QVERIFY(window_->isWindowModified()); // with clones that cannot be undone any more
        at_rest();
        QVERIFY(window_->save_to(folder_.filePath("all.lwo").toStdString(), false));
        QVERIFY(!window_->isWindowModified());
        QVERIFY(window_->close());
    }

    void tells_of_a_command_that_did_nothing()
    {
        MainWindow window;
        window.workspace().load_module(DASTREL_ENDING_MODULE);
        window.show();
        QVERIFY(window.open({example("terrain.lwo")}));
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        window.run_command("Nothing");
        QVERIFY2(message.contains("ended without doing anything"), qPrintable(message));
        QVERIFY(!window.workspace().session().can_undo());
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
    }

    void warns_in_the_panel_of_vertices_that_are_not_finite()
    {
        const std::filesystem::path file = folder_.filePath("broken.lwo").toStdString();
        mesh::Document ground = formats::read_lwo2_file(example("terrain.lwo"), {});
        const std::uint32_t corner = ground.layers[0].polygons.points(7)[2];
        ground.layers[0].points[corner].x = std::numeric_limits<double>::quiet_NaN();
        formats::write_lwo2_file(ground, file);
        const auto warnings = [this] {
            QString text;
            bool seen = false;
            support::run_command(*window_, [&](PanelDialog& dialog) {
                const auto* const label = dialog.findChild<QLabel*>("warnings");
                text = label->text();
                seen = label->isVisible();
                dialog.reject();
            });
            return seen ? text : QString();
        };
        QCOMPARE(warnings(), QString());
        QVERIFY(window_->open({file, example("tree.lwo")}));
        at_rest();
        const QString text = warnings();
        QVERIFY2(text.startsWith("Warning: the ground has ") && text.contains("not finite") &&
                     text.contains("layer 1 'terrain'"),
                 qPrintable(text));
    }

    void warns_of_models_that_are_too_small_or_several()
    {
        const std::filesystem::path small = folder_.filePath("small.lwo").toStdString();
        mesh::Document tree = formats::read_lwo2_file(example("tree.lwo"), {});
        for (std::size_t i = 0; i < tree.layers[0].points.size(); ++i) {
            mesh::Vec3& point = tree.layers[0].points[i];
            point = {point.x / 1e5, point.y / 1e5, point.z / 1e5};
        }
        formats::write_lwo2_file(tree, small);
        const auto warnings = [this](const MainWindow::Paths& files) {
            [&] { QVERIFY(window_->open(files)); }();
            at_rest();
            QString text;
            support::run_command(*window_, [&](PanelDialog& dialog) {
                text = dialog.findChild<QLabel*>("warnings")->text();
                dialog.reject();
            });
            return text;
        };
        const QString too_small = warnings({example("terrain.lwo"), small});
        QVERIFY2(too_small.contains("too small to be seen") &&
                     too_small.contains("scale the model"),
                 qPrintable(too_small));
        QVERIFY2(!too_small.contains("wrong order"), qPrintable(too_small));
        const QString wrong_way = warnings({example("tree.lwo"), example("terrain.lwo")});
        QVERIFY2(wrong_way.contains("as large as the ground") &&
                     wrong_way.contains("in the wrong order") &&
                     wrong_way.contains("Ctrl+5, which makes layer 2 'terrain' the ground"),
                 qPrintable(wrong_way));
        window_->action(ActionId::swap_roles)->trigger();
        QCOMPARE(window_->workspace().session().roles(),
                 (std::vector{modeler::LayerRole::background, modeler::LayerRole::foreground}));
        at_rest();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QCOMPARE(dialog.findChild<QLabel*>("warnings")->text(), QString());
            dialog.reject();
        });
        const QString two =
            warnings({example("terrain.lwo"), example("tree.lwo"), example("stone.lwo")});
        QVERIFY2(two.contains("tree") && two.contains("stone") &&
                     two.contains("role of the others"),
                 qPrintable(two));
    }

    void adds_the_grounds_slopes_to_a_refusal()
    {
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        support::run_command(*window_, [](PanelDialog& dialog) {
            const auto editor = [&](const char* label) {
                auto* const slot = dialog.findChild<QWidget*>(label);
                auto* const tabs = dialog.findChild<QTabWidget*>();
                for (int i = 0; i < tabs->count() && !slot->isVisible(); ++i)
                    tabs->setCurrentIndex(i);
                return dynamic_cast<desktop::ControlSlot*>(slot)->editor().widget();
            };
            QTest::keyClick(editor("Slope Angle Limits"), Qt::Key_Space);
            support::type(editor("Min Slope Angle"), "80");
            support::type(editor("Max Slope Angle"), "85");
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        QVERIFY2(message.startsWith("Change slope angle settings\n") &&
                     message.contains("the ground's polygons slope"),
                 qPrintable(message));
    }

    void proposes_names_that_are_no_file_of_the_scene()
    {
        const std::filesystem::path ground = folder_.filePath("hill.lwo").toStdString();
        std::filesystem::copy_file(example("terrain.lwo"), ground);
        const auto in_folder = [this](const char* name) { return folder_.filePath(name); };
        QVERIFY(window_->open({ground, example("tree.lwo")}));
        at_rest();
        QCOMPARE(proposed_by(ActionId::save_as), in_folder("hill-scene.lwo"));
        QCOMPARE(proposed_by(ActionId::save), in_folder("hill-scene.lwo"));
        QCOMPARE(proposed_by(ActionId::save_foreground), in_folder("hill-with-clones.lwo"));
        // One of the names stands for a file of the scene, by a link.
        std::filesystem::create_hard_link(ground,
                                          folder_.filePath("hill-with-clones.lwo").toStdString());
        QCOMPARE(proposed_by(ActionId::save_foreground), in_folder("hill-with-clones-2.lwo"));
        // The folder that was used last comes before the ground's own.
        QVERIFY(QDir(folder_.path()).mkdir("results"));
        QSettings().setValue("folder/objects", folder_.filePath("results"));
        QCOMPARE(proposed_by(ActionId::save_foreground), in_folder("results/hill-with-clones.lwo"));
        // A scene with a file of its own has its name.
        QVERIFY(window_->save_to(folder_.filePath("mine.lwo").toStdString(), false));
        QCOMPARE(proposed_by(ActionId::save_as), in_folder("mine.lwo"));
    }
};

} // namespace

int main(int count, char** arguments)
{
    EditsTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "edits_test.moc"
