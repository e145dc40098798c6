// SPDX-License-Identifier: MIT
// Clones in a layer of their own: what the panel's switch does, and what comes after.
#include <QAction>
#include <QCheckBox>
#include <QLabel>
#include <QSettings>
#include <QTest>
#include <QTreeWidget>

#include "desktop/panel/control_slot.h"
#include "desktop/presets/preset_bar.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"
#include "tests/support/mesh_compare.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::PanelDialog;
using modeler::LayerRole;
using support::example;
using support::wait_until;

class OwnLayerTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;

    [[nodiscard]] const mesh::Document& document()
    {
        return window_->workspace().session().document();
    }

    void at_rest()
    {
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
    }

    static QCheckBox* own_layer(PanelDialog& dialog)
    {
        return dialog.findChild<QCheckBox*>("own layer");
    }

    static QString warnings(PanelDialog& dialog)
    {
        const auto* const label = dialog.findChild<QLabel*>("warnings");
        return label->isVisible() ? label->text() : QString();
    }

    /// Makes twelve clones, after what the test does in the panel.
    void make_clones(const std::function<void(PanelDialog&)>& before = {})
    {
        support::run_command(*window_, [&](PanelDialog& dialog) {
            if (before)
                before(dialog);
            auto* const slot = dialog.findChild<QWidget*>("Number of Clones");
            support::type(dynamic_cast<desktop::ControlSlot*>(slot)->editor().widget(), "12");
            QTest::keyClick(&dialog, Qt::Key_Return);
        });
        at_rest();
    }

private Q_SLOTS:
    void init()
    {
        QSettings().clear();
        window_ = std::make_unique<MainWindow>();
        window_->resize(900, 700);
        window_->load_module();
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        at_rest();
    }
    void cleanup() { window_.reset(); }

    void keeps_the_ground_as_it_is()
    {
        const mesh::Document before = support::copy_of(document());
        make_clones([](PanelDialog& dialog) { QVERIFY(own_layer(dialog)->isChecked()); });
        QCOMPARE(document().layers.size(), std::size_t{3});
        const mesh::Layer& clones = document().layers[2];
        QCOMPARE(clones.name, "clones of tree");
        QCOMPARE(clones.points.size(), 12 * before.layers[1].points.size());
        QCOMPARE(window_->workspace().session().roles()[2], LayerRole::shown);
        mesh::Document rest = support::copy_of(document());
        rest.layers.pop_back();
        rest.tags.truncate(before.tags.size());
        QCOMPARE(support::first_difference(rest, before), std::string());
        const QTreeWidget& list = window_->lists().layers();
        QCOMPARE(list.topLevelItemCount(), 3);
        QCOMPARE(list.topLevelItem(2)->text(0), "clones of tree");

        window_->action(ActionId::undo)->trigger();
        QCOMPARE(support::first_difference(document(), before), std::string());
        QCOMPARE(list.topLevelItemCount(), 2);
        at_rest();
        window_->action(ActionId::redo)->trigger();
        QCOMPARE(document().layers.size(), std::size_t{3});
        QCOMPARE(list.topLevelItemCount(), 3);
        at_rest();
        QVERIFY(window_->add({example("stone.lwo")}));
        QCOMPARE(window_->workspace().file_of(2), std::filesystem::path());
        QCOMPARE(window_->workspace().file_of(3).filename(), std::filesystem::path("stone.lwo"));
        at_rest();
    }

    void leaves_the_clones_out_of_the_next_run()
    {
        make_clones();
        QString message;
        make_clones([&](PanelDialog& dialog) { message = warnings(dialog); });
        QVERIFY2(
            message.startsWith("Warning: there are clones of an earlier run (layer 3 'clones of "
                               "tree') that are shown only"),
            qPrintable(message));
        QCOMPARE(document().layers.size(), std::size_t{4});
        QCOMPARE(document().layers[2].points.size(), document().layers[3].points.size());
        QCOMPARE(document().layers[3].name, "clones of tree 2"); // which tells them apart
        make_clones();
        QCOMPARE(document().layers[4].name, "clones of tree 3");
    }

    void warns_of_clones_in_the_ground_and_remembers_the_switch()
    {
        const std::size_t ground = document().layers[0].points.size();
        make_clones([](PanelDialog& dialog) {
            QCOMPARE(warnings(dialog), QString());
            own_layer(dialog)->click();
        });
        QCOMPARE(document().layers.size(), std::size_t{2});
        QVERIFY(document().layers[0].points.size() > ground);
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QVERIFY(!own_layer(dialog)->isChecked());
            QVERIFY2(warnings(dialog).contains("the ground contains clones of an earlier run"),
                     qPrintable(warnings(dialog)));
            dialog.reject();
        });
        QCOMPARE(QSettings().value("own layer").toBool(), false);
    }

    void warns_of_a_layer_of_clones_that_is_made_ground()
    {
        make_clones();
        window_->set_role(2, LayerRole::foreground);
        at_rest();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            const QString message = warnings(dialog);
            QVERIFY2(message.contains("the ground contains clones of an earlier run (layer 3"),
                     qPrintable(message));
            QVERIFY2(!message.contains("shown only"), qPrintable(message));
            dialog.reject();
        });
        window_->set_role(2, LayerRole::hidden);
        at_rest();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QCOMPARE(warnings(dialog), QString());
            dialog.reject();
        });
    }

    void shows_the_clones_as_a_ghost()
    {
        std::size_t points = 0;
        connect(&window_->preview(), &desktop::Preview::shown, window_.get(),
                [&](const std::shared_ptr<const desktop::PreviewMesh>& mesh) {
                    points = mesh != nullptr ? mesh->points : 0;
                });
        window_->preview().switch_by_person(true);
        const auto ghost_is_drawn = [&] { return window_->tracer().look().ghost != nullptr; };
        support::run_command(*window_,
                             {{ghost_is_drawn, [](PanelDialog& dialog) { dialog.reject(); }}});
        QCOMPARE(points, 30 * document().layers[1].points.size());
        QCOMPARE(document().layers.size(), std::size_t{2});
    }

    void saves_ground_and_clones_as_the_command_line_writes_them()
    {
        const QString settings = folder_.filePath("settings.json");
        make_clones();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            dialog.findChild<desktop::PresetBar*>()->export_file(settings.toStdString());
            dialog.reject();
        });
        const std::filesystem::path here = folder_.filePath("here.lwo").toStdString();
        const QString there = folder_.filePath("there.lwo");
        QVERIFY(window_->save_to(here, true));
        QCOMPARE(support::run_program(
                     {"scatter", "-q", "--own-layer", "--settings", settings, "--clock",
                      "1790000000", QString::fromStdString(example("terrain.lwo").string()),
                      QString::fromStdString(example("tree.lwo").string()), "-o", there}),
                 0);
        QVERIFY(support::bytes_of(here) == support::bytes_of(there.toStdString()));

        // Written again as a whole scene and read again, every layer has the role it had.
        at_rest();
        const std::filesystem::path all = folder_.filePath("all.lwo").toStdString();
        QVERIFY(window_->save_to(all, false));
        const std::vector<LayerRole> roles = window_->workspace().session().roles();
        QCOMPARE(roles,
                 (std::vector{LayerRole::foreground, LayerRole::background, LayerRole::shown}));
        QVERIFY(window_->open({all}));
        QCOMPARE(window_->workspace().session().roles(), roles);
        at_rest();
        // The layers are told apart by their names, without that of their common file.
        const QTreeWidget& list = window_->lists().layers();
        for (int i = 0; i < 3; ++i)
            QCOMPARE(list.topLevelItem(i)->text(0),
                     (QStringList{"terrain", "tree", "clones of tree"}[i]));
        QCOMPARE(window_->workspace().models(), std::vector<std::string>{"tree"});
        QVERIFY(window_->add({example("tree.lwo")}));
        at_rest();
        QCOMPARE(list.topLevelItem(1)->text(0), "tree (all)");
        // A file that was written by somebody else has the usual roles.
        std::filesystem::copy_file(example("tree.lwo"), all,
                                   std::filesystem::copy_options::overwrite_existing);
        QVERIFY(window_->open({all}));
        QCOMPARE(window_->workspace().session().roles(), std::vector{LayerRole::foreground});
        at_rest();

        // Read again, the clones are still no ground.
        QVERIFY(window_->open({here, example("tree.lwo")}));
        QCOMPARE(window_->workspace().session().roles(),
                 (std::vector{LayerRole::foreground, LayerRole::shown, LayerRole::background}));
        at_rest();
    }
};

} // namespace

int main(int count, char** arguments)
{
    OwnLayerTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "own_layer_test.moc"
