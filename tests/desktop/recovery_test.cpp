// SPDX-License-Identifier: MIT
// A module that never comes back, crashes, or ends the program: the scene is there again at the
// next start. The window that ends is a process of its own: this program with the way of ending as
// its argument.
#include <csignal>
#include <cstdlib>
#include <thread>

#include <QAction>
#include <QMessageBox>
#include <QProcess>
#include <QTest>

#include "desktop/recovery/kept_scenes.h"
#include "desktop/window/main_window.h"
#include "formats/lwo2_reader.h"
#include "tests/desktop/support.h"
#include "tests/support/mesh_compare.h"

namespace {

using desktop::MainWindow;
using modeler::LayerRole;
using support::example;
using support::wait_until;

/// A window with work that no file has, whose command then ends in the given way.
int end_like(const char* way)
{
    MainWindow window;
    window.show();
    window.workspace().load_module(DASTREL_ENDING_MODULE);
    window.open({example("terrain.lwo"), example("tree.lwo")});
    (void)wait_until([&] { return !window.tracer().reading(); });
    window.set_role(1, LayerRole::hidden);
    (void)wait_until([&] { return !window.tracer().reading(); });
    window.run_command("Adds"); // ends well, and leaves work behind
    (void)wait_until([&] { return !window.tracer().reading(); });
    window.run_command(way);
    return 0;
}

class RecoveryTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir state_;
    QTemporaryDir folder_;

    void wait_for_kept_scene()
    {
        QVERIFY(wait_until([] { return !desktop::kept_scenes().empty(); }));
    }

private Q_SLOTS:
    void init()
    {
        qputenv("XDG_STATE_HOME", state_.path().toUtf8());
        QVERIFY(desktop::kept_scenes().empty());
    }

    void gives_the_scene_back_data()
    {
        QTest::addColumn<QString>("way");
        QTest::newRow("a loop, and the process killed") << "Loops";
        QTest::newRow("a crash") << "Crashes";
        QTest::newRow("the program's end") << "Exits";
    }
    void gives_the_scene_back()
    {
        QFETCH(const QString, way);
        QProcess window;
        window.setProcessChannelMode(QProcess::ForwardedChannels);
        window.start(QCoreApplication::applicationFilePath(), {"--end-like", way});
        QVERIFY(window.waitForStarted());
        if (way == "Loops") {
            const QString sign = state_.filePath("looping");
            QVERIFY(wait_until([&] { return QFile::exists(sign); }));
            QVERIFY(QFile::remove(sign));
            QVERIFY(desktop::kept_scenes().empty()); // not before it is needed
            ::kill(static_cast<pid_t>(window.processId()), SIGKILL);
        }
        QVERIFY(wait_until([&] { return window.state() == QProcess::NotRunning; }));
        wait_for_kept_scene();

        MainWindow next;
        next.show();
        QString message;
        support::answer_box(QMessageBox::Open, message);
        QVERIFY(next.offer_kept_scenes());
        QVERIFY2(message.contains("terrain.lwo + tree.lwo"), qPrintable(message));
        const mesh::Document& document = next.workspace().session().document();
        QCOMPARE(document.layers.size(), std::size_t{2});
        const std::size_t points =
            formats::read_lwo2_file(example("terrain.lwo"), {}).layers[0].points.size();
        QCOMPARE(document.layers[0].points.size(), points + 1); // of the command that ended well
        QCOMPARE(next.workspace().session().roles()[0], LayerRole::foreground);
        QCOMPARE(next.workspace().session().roles()[1], LayerRole::hidden);
        QVERIFY(next.workspace().modified());
        QVERIFY(next.workspace().path().empty());
        QVERIFY(!desktop::kept_scenes().empty()); // until it is saved
        QVERIFY(next.save_to(folder_.filePath("saved.lwo").toStdString(), false));
        QVERIFY(desktop::kept_scenes().empty());
        QVERIFY(wait_until([&] { return !next.tracer().reading(); }));
    }

    void leaves_nothing_behind_a_command_that_ends_well()
    {
        MainWindow window;
        window.workspace().load_module(DASTREL_ENDING_MODULE);
        QVERIFY(window.open({example("terrain.lwo"), example("tree.lwo")}));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
            window.run_command("Adds");
        }
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        QCOMPARE(window.workspace().runs(), 3);
        QVERIFY(desktop::kept_scenes().empty());
    }

    void asks_again_later_and_throws_away_on_request()
    {
        const std::filesystem::path file = desktop::new_kept_file();
        desktop::write_kept_note({file, "two\nlines", {LayerRole::background}});
        std::filesystem::copy_file(example("terrain.lwo"), file);
        QCOMPARE(desktop::kept_scenes().at(0).title, "two lines");
        MainWindow window;
        QString message;
        support::answer_box(QMessageBox::Cancel, message);
        QVERIFY(!window.offer_kept_scenes());
        QCOMPARE(desktop::kept_scenes().size(), std::size_t{1});
        support::answer_box(QMessageBox::Discard, message);
        QVERIFY(!window.offer_kept_scenes());
        QVERIFY(desktop::kept_scenes().empty());
        QVERIFY(std::filesystem::is_empty(file.parent_path()));
    }
};

} // namespace

int main(int count, char** arguments)
{
    if (count == 3 && std::string_view(arguments[1]) == "--end-like") {
        const QApplication application(count, arguments);
        return end_like(arguments[2]);
    }
    RecoveryTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "recovery_test.moc"
