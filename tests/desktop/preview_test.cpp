// SPDX-License-Identifier: MIT
// What the preview shows is what OK gives; what is exported gives the same on the command line.
#include <cstring>
#include <mutex>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QSettings>
#include <QTest>

#include "desktop/panel/control_slot.h"
#include "desktop/panel/number_field.h"
#include "desktop/presets/preset_bar.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"
#include "tests/support/mesh_compare.h"

namespace {

using desktop::MainWindow;
using desktop::PanelDialog;
using desktop::PreviewMesh;
using support::example;
using support::wait_until;

QWidget* field(PanelDialog& dialog, const QString& label)
{
    return dynamic_cast<desktop::ControlSlot*>(dialog.findChild<QWidget*>(label))
        ->editor()
        .widget();
}

/// Says in what the layer differs from an older state of it with the preview added; empty: nothing.
std::string difference(const mesh::Layer& layer, const desktop::LayerCount& before,
                       const mesh::Layer& added)
{
    if (layer.points.size() - before.points != added.points.size())
        return "number of points";
    if (!added.points.empty() &&
        std::memcmp(layer.points.data() + before.points, added.points.data(),
                    added.points.size() * sizeof(mesh::Vec3)) != 0)
        return "points";
    if (layer.polygons.size() - before.polygons != added.polygons.size())
        return "number of polygons";
    for (std::size_t i = 0; i < added.polygons.size(); ++i) {
        const auto mine = layer.polygons.points(before.polygons + i);
        const auto shown = added.polygons.points(i);
        if (mine.size() != shown.size())
            return "corners";
        for (std::size_t k = 0; k < mine.size(); ++k)
            if (mine[k] != shown[k] + before.points)
                return "corners";
        if (layer.polygons.surface(before.polygons + i) != added.polygons.surface(i))
            return "surfaces";
    }
    return {};
}

class PreviewTest : public QObject {
    Q_OBJECT

private:
    const mesh::Document& document() { return window_->workspace().session().document(); }

    [[nodiscard]] bool at_rest()
    {
        return wait_until([this] { return !window_->tracer().reading(); });
    }

    /// The time when a preview is shown.
    [[nodiscard]] std::function<bool()> preview_is_there()
    {
        return [this] { return shown_ != nullptr; };
    }

    /// The time when so many milliseconds have gone by since it was first asked for.
    [[nodiscard]] static std::function<bool()> after(qint64 milliseconds)
    {
        return [milliseconds, clock = QElapsedTimer()]() mutable {
            if (!clock.isValid())
                clock.start();
            return clock.elapsed() >= milliseconds;
        };
    }

    static void press_ok(PanelDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Return); }
    static void press_cancel(PanelDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }

    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;
    std::shared_ptr<const PreviewMesh> shown_;

    /// The bytes that `dastrel scatter` writes for the same files.
    [[nodiscard]] std::string scattered_by_the_program(const QStringList& options)
    {
        const QString file = folder_.filePath("there.lwo");
        const QStringList arguments{"scatter",
                                    "-q",
                                    QString::fromStdString(example("terrain.lwo").string()),
                                    QString::fromStdString(example("tree.lwo").string()),
                                    "-o",
                                    file};
        if (support::run_program(arguments + options) != 0)
            return "the program failed";
        return support::bytes_of(file.toStdString());
    }

private Q_SLOTS:
    void init()
    {
        QSettings().setValue("own layer", false); // as the command line by itself
        window_ = std::make_unique<MainWindow>();
        window_->resize(700, 500);
        window_->load_module();
        window_->preview().switch_by_person(true);
        connect(&window_->preview(), &desktop::Preview::shown, this,
                [this](std::shared_ptr<const PreviewMesh> mesh) { shown_ = std::move(mesh); });
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(at_rest());
    }
    void cleanup()
    {
        window_.reset();
        shown_.reset();
    }

    void every_ok_gives_what_its_preview_showed()
    {
        for (const QString clones : {"20", "35", "10"}) {
            const auto before = desktop::count_layers(document());
            const auto fill_in = [&](PanelDialog& dialog) {
                support::type(field(dialog, "Number of Clones"), clones);
                support::type(field(dialog, "Auto morph maps"), "3");
                support::type(field(dialog, "Jitter Cloned points"), "0.1");
                shown_ = nullptr; // it was of the values that the panel opened with
            };
            const auto confirm = [&](PanelDialog& dialog) {
                auto now = desktop::count_layers(document());
                if (now.size() > before.size()) // the layer that the clones may come into
                    QCOMPARE(now.back(), desktop::LayerCount{});
                now.resize(before.size());
                QCOMPARE(now, before); // nothing happened to it
                press_ok(dialog);
            };
            support::run_command(*window_,
                                 {{preview_is_there(), fill_in}, {preview_is_there(), confirm}});
            QVERIFY(shown_ != nullptr);
            QCOMPARE(shown_->points, static_cast<std::size_t>(clones.toInt()) * before[1].points);
            for (std::size_t i = 0; i < before.size(); ++i)
                QCOMPARE(difference(document().layers[i], before[i], shown_->layers[i]),
                         std::string());
            QVERIFY(document().layers[0].points.size() > before[0].points);
            QVERIFY(at_rest());
        }
    }

    void previews_that_are_cancelled_change_nothing()
    {
        const mesh::Document before = support::copy_of(document());
        std::vector<support::Step> steps{{preview_is_there(), [](PanelDialog&) {}}};
        for (const QString clones : {"40", "41", "42", "43"}) // each ends the one before it
            steps.push_back({after(100), [clones](PanelDialog& dialog) {
                                 support::type(field(dialog, "Number of Clones"), clones);
                             }});
        steps.push_back({after(90), press_cancel});
        support::run_command(*window_, steps);
        QCOMPARE(support::first_difference(document(), before), std::string());
        // Nor has the module's own state moved on: its next run is still its first.
        const std::filesystem::path here = folder_.filePath("here.lwo").toStdString();
        QVERIFY(at_rest());
        support::run_command(*window_, press_ok);
        QVERIFY(window_->save_to(here, true));
        QVERIFY(support::bytes_of(here) == scattered_by_the_program({}));
    }

    void the_exported_preset_gives_the_same_file_on_the_command_line()
    {
        const QString preset = folder_.filePath("tuned.json");
        const auto fill_in = [&](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "25");
            support::type(field(dialog, "Distribution"), "66.6");
            support::type(field(dialog, "H Max"), "123.4");
            support::type(field(dialog, "Jitter Cloned points"), "0.03");
            QTest::keyClick(field(dialog, "Density WeightMap"), Qt::Key_Down);
            shown_ = nullptr;
        };
        const auto confirm = [&](PanelDialog& dialog) {
            dialog.findChild<desktop::PresetBar*>()->export_file(preset.toStdString());
            press_ok(dialog);
        };
        support::run_command(*window_, {{{}, fill_in}, {preview_is_there(), confirm}});
        const std::filesystem::path here = folder_.filePath("here.lwo").toStdString();
        QVERIFY(window_->save_to(here, true));
        QVERIFY(support::bytes_of(here).size() > 1000);
        QVERIFY(support::bytes_of(here) ==
                scattered_by_the_program({"--settings", preset, "--clock",
                                          QString::fromStdString(window_->workspace().clock())}));
    }

    void follows_the_switch()
    {
        const auto box = [](PanelDialog& dialog) {
            return dialog.findChild<QCheckBox*>("preview");
        };
        const auto switch_off = [&](PanelDialog& dialog) {
            QVERIFY(box(dialog)->isChecked());
            box(dialog)->click();
            QVERIFY(shown_ == nullptr);
            QVERIFY(!window_->preview().run().running());
            support::type(field(dialog, "Number of Clones"), "3");
        };
        const auto switch_on = [&](PanelDialog& dialog) {
            QVERIFY(shown_ == nullptr);
            box(dialog)->click();
        };
        support::run_command(*window_, {{preview_is_there(), switch_off},
                                        {after(300), switch_on},
                                        {preview_is_there(), press_cancel}});
    }

    void switches_itself_off_for_a_slow_scene()
    {
        window_.reset();
        MainWindow window;
        window.show(); // the panel stands in it
        window.load_module();
        QVERIFY(window.open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        const QCheckBox* box = nullptr;
        const auto slow_down = [&](PanelDialog& dialog) {
            box = dialog.findChild<QCheckBox*>("preview");
            support::type(field(dialog, "Number of Clones"), "2000000");
        };
        const auto look = [&](PanelDialog& dialog) {
            QVERIFY(dialog.findChild<QLabel*>("preview status")->text().contains("a second"));
            QVERIFY(!window.preview().run().running());
            press_cancel(dialog);
        };
        support::run_command(window, {{{}, slow_down}, {[&] { return !box->isChecked(); }, look}});
    }

    void tries_again_when_the_value_that_was_too_much_is_taken_back()
    {
        window_.reset();
        MainWindow window;
        window.show(); // the panel stands in it
        window.load_module();
        shown_ = nullptr;
        connect(&window.preview(), &desktop::Preview::shown, this,
                [this](std::shared_ptr<const PreviewMesh> mesh) { shown_ = std::move(mesh); });
        QVERIFY(window.open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        const QCheckBox* box = nullptr;
        QLabel* status = nullptr;
        const auto too_much = [&](PanelDialog& dialog) {
            box = dialog.findChild<QCheckBox*>("preview");
            status = dialog.findChild<QLabel*>("preview status");
            support::type(field(dialog, "Number of Clones"), "2000000");
        };
        const auto take_back = [&](PanelDialog& dialog) {
            QVERIFY(shown_ == nullptr);
            QVERIFY2(status->text().startsWith("off for these values"), qPrintable(status->text()));
            support::type(field(dialog, "Number of Clones"), "15");
            QVERIFY(box->isChecked());
        };
        const auto look = [&](PanelDialog& dialog) {
            QVERIFY2(status->text().startsWith("showing 15 clones (495 points"),
                     qPrintable(status->text()));
            // What a person switches off stays off.
            dialog.findChild<QCheckBox*>("preview")->click();
            QCOMPARE(status->text(), "off");
            support::type(field(dialog, "Number of Clones"), "16");
            QVERIFY(!box->isChecked());
            QVERIFY(!window.preview().due());
            press_cancel(dialog);
        };
        support::run_command(window,
                             {{{}, too_much},
                              {[&] { return !box->isChecked(); }, take_back},
                              {[&] { return status->text().startsWith("showing"); }, look}});
    }

    void gives_a_run_up_as_soon_as_its_values_change()
    {
        QLabel* status = nullptr;
        const auto begin = [&](PanelDialog& dialog) {
            status = dialog.findChild<QLabel*>("preview status");
            QVERIFY2(status->text().startsWith("showing 30 clones"), qPrintable(status->text()));
            support::type(field(dialog, "Number of Clones"), "3000000");
            QVERIFY2(status->text().contains("out of date in the view: 30 clones"),
                     qPrintable(status->text()));
        };
        const auto change = [&](PanelDialog& dialog) {
            support::type(field(dialog, "Number of Clones"), "40");
            QVERIFY(!window_->preview().run().running());
            shown_ = nullptr;
        };
        const auto look = [&](PanelDialog& dialog) {
            QCOMPARE(shown_->points, std::size_t{40 * 33});
            press_cancel(dialog);
        };
        support::run_command(
            *window_, {{[&] {
                            const auto* const label = window_->findChild<QLabel*>("preview status");
                            return label != nullptr && label->text().startsWith("showing");
                        },
                        begin},
                       {[&] { return status->text().startsWith("running for"); }, change},
                       {[&] { return status->text().startsWith("showing"); }, look}});
    }

    void gives_a_ghost_up_that_is_out_of_date_before_it_is_drawn()
    {
        // Before the thread that draws comes to it: it waits here until the second one is asked
        // for.
        std::mutex gate;
        gate.lock();
        int drawn = 0;
        connect(&window_->tracer(), &desktop::Tracer::ghost_ready, this, [&] { ++drawn; });
        auto ghost = std::make_shared<PreviewMesh>();
        ghost->layers.push_back({});
        window_->tracer().post([&gate] { const std::lock_guard wait(gate); });
        window_->tracer().show_ghost(ghost);
        window_->tracer().abandon_ghost();
        gate.unlock();
        QVERIFY(at_rest());
        QTest::qWait(1); // what the thread told has come
        QCOMPARE(drawn, 0);
        window_->tracer().show_ghost(ghost);
        QVERIFY(wait_until([&] { return drawn == 1; }));
    }

    void tells_what_the_command_would_say()
    {
        const QLabel* status = nullptr;
        const auto fill_in = [&](PanelDialog& dialog) {
            status = dialog.findChild<QLabel*>("preview status");
            QTest::keyClick(field(dialog, "Slope Angle Limits"), Qt::Key_Space);
            support::type(field(dialog, "Max Slope Angle"), "0");
        };
        const auto look = [&](PanelDialog& dialog) {
            QVERIFY(shown_ != nullptr);
            QCOMPARE(shown_->points, std::size_t{0});
            press_cancel(dialog);
        };
        support::run_command(
            *window_,
            {{{}, fill_in}, {[&] { return status->text().contains("Change slope angle"); }, look}});
    }

    void waits_while_a_value_is_missing()
    {
        const auto spoil = [&](PanelDialog& dialog) {
            support::type(field(dialog, "Iterations"), "many");
            QVERIFY(shown_ == nullptr);
        };
        const auto mend = [&](PanelDialog& dialog) {
            QVERIFY(shown_ == nullptr);
            support::type(field(dialog, "Iterations"), "3");
        };
        support::run_command(
            *window_,
            {{preview_is_there(), spoil}, {after(300), mend}, {preview_is_there(), press_cancel}});
    }

    void keeps_loads_and_deletes_presets()
    {
        support::run_command(*window_, [&](PanelDialog& dialog) {
            auto* const presets = dialog.findChild<desktop::PresetBar*>();
            QWidget* const clones = field(dialog, "Number of Clones");
            const auto text = [](QWidget* widget) {
                return qobject_cast<desktop::NumberField*>(widget)->text();
            };
            support::type(clones, "77");
            presets->save_as("meadow");
            support::type(clones, "5");
            presets->save_as("a/b"); // can be no file's name
            QVERIFY2(dialog.message().contains("'a/b'"), qPrintable(dialog.message()));
            presets->load("meadow");
            QCOMPARE(text(clones), "77");
            // A file that is wrong at its end leaves all values as they are.
            const QString wrong = folder_.filePath("wrong.json");
            QFile file(wrong);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("{\"clone_num\": 3, \"density_wg\": \"No such map\"}");
            file.close();
            presets->import_file(wrong.toStdString());
            QVERIFY2(dialog.message().contains("No such map"), qPrintable(dialog.message()));
            QCOMPARE(text(clones), "77");
            // No preset is read that would not end, or is nested too deep to be taken apart.
            presets->import_file("/dev/zero");
            QVERIFY2(dialog.message().contains("it is a device"), qPrintable(dialog.message()));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write("{\"seed\": " + QByteArray(60000, '[') + QByteArray(60000, ']') + "}");
            file.close();
            presets->import_file(wrong.toStdString());
            QVERIFY2(dialog.message().contains("nested more than"), qPrintable(dialog.message()));
            QCOMPARE(text(clones), "77");
            presets->remove("meadow");
            presets->load("meadow");
            QVERIFY2(dialog.message().contains("meadow"), qPrintable(dialog.message()));
            press_cancel(dialog);
        });
    }
};

} // namespace

int main(int count, char** arguments)
{
    PreviewTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "preview_test.moc"
