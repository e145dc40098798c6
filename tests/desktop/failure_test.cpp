// SPDX-License-Identifier: MIT
// What goes wrong in the window ends no program, loses no scene, and changes none that is read.
#include <csignal>
#include <fstream>
#include <future>
#include <new>
#include <stdexcept>
#include <thread>

#include <QAction>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <sys/resource.h>
#include <sys/stat.h>

#include "desktop/application.h"
#include "desktop/panel/panel_dialog.h"
#include "desktop/presets/preset_bar.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"
#include "tests/support/failing_memory.h"
#include "tests/support/mesh_compare.h"

/// Where the allocation after the one for a QPointer fails, Qt does not free the first.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that LeakSanitizer asks for
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n";
}

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using support::example;
using support::wait_until;

const mesh::Document& document(MainWindow& window)
{
    return window.workspace().session().document();
}

desktop::Application& application() { return dynamic_cast<desktop::Application&>(*qApp); }

/// Presses the default button of every box, as long as it lives.
class AnswersBoxes : public QTimer {
public:
    AnswersBoxes()
    {
        connect(this, &QTimer::timeout, this, [this] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                ++boxes;
                box->defaultButton() != nullptr ? box->defaultButton()->click() : box->accept();
            }
        });
        start(std::chrono::milliseconds(1));
    }
    int boxes = 0;
};

class FailureTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;

    [[nodiscard]] std::filesystem::path path(const char* name) const
    {
        return folder_.filePath(name).toStdString();
    }

    void at_rest()
    {
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QTest::qWait(5);
    }

    [[nodiscard]] std::size_t selected() const
    {
        return desktop::selected_count(window_->workspace().session());
    }

    /// Lets allocations of `work` fail, one at a time: about `tries` of them, evenly spread. The
    /// window then has either the scene that it had or the one it was to have, and goes on.
    void try_many(const std::function<void()>& prepare, const std::function<void()>& work,
                  std::size_t tries = 40)
    {
        AnswersBoxes answers;
        const auto make_ready = [&] {
            prepare();
            at_rest();
        };
        make_ready();
        const mesh::Document before = support::copy_of(document(*window_));
        std::size_t all = 0;
        {
            const support::FailingMemory memory(0);
            work();
            all = memory.count();
        }
        at_rest();
        const mesh::Document after = support::copy_of(document(*window_));
        QVERIFY(all > 0);
        for (std::size_t number = 1; number <= all;
             number += std::max<std::size_t>(1, all / tries)) {
            make_ready();
            {
                const support::FailingMemory memory(number);
                try {
                    work();
                } catch (const std::bad_alloc&) {
                }
            }
            at_rest();
            const std::string changed = support::first_difference(document(*window_), before);
            if (!changed.empty())
                QCOMPARE(support::first_difference(document(*window_), after), std::string());
            QCOMPARE(window_->workspace().session().roles().size(),
                     document(*window_).layers.size());
        }
        make_ready();
        work(); // and now nothing fails
        at_rest();
        QCOMPARE(support::first_difference(document(*window_), after), std::string());
    }

private Q_SLOTS:
    void init()
    {
        window_ = std::make_unique<MainWindow>();
        window_->load_module();
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        at_rest();
    }
    void cleanup() { window_.reset(); }

    void ends_an_exception_out_of_a_slot_and_tells_it()
    {
        std::vector<std::string> reported;
        application().set_failure_handler(
            [&](std::string_view what) { reported.emplace_back(what); });
        QTimer::singleShot(0, [] { throw std::runtime_error("the slot failed"); });
        QVERIFY(wait_until([&] { return reported.size() == 1; }));
        QCOMPARE(reported[0], "the slot failed");
        QTimer::singleShot(0, [] { throw std::bad_alloc(); });
        QVERIFY(wait_until([&] { return reported.size() == 2; }));
        QCOMPARE(reported[1], "there is too little memory for that");
        application().set_failure_handler({});
    }

    void offers_to_save_the_scene_after_a_failure()
    {
        QString message;
        support::answer_box(QMessageBox::Ignore, message);
        window_->report_failure("the slot failed");
        QVERIFY2(message.contains("the slot failed") && message.contains("Save it now"),
                 qPrintable(message));
        QCOMPARE(document(*window_).layers.size(), std::size_t{2});
    }

    void keeps_the_scene_when_none_of_the_files_to_open_can_be_read()
    {
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        QVERIFY(!window_->open({path("none.lwo")}));
        QVERIFY2(message.contains("none.lwo"), qPrintable(message));
        QCOMPARE(document(*window_).layers.size(), std::size_t{2});
    }

    void selects_nothing_while_the_drawing_thread_reads()
    {
        std::promise<void> go_on;
        window_->tracer().post([&] { go_on.get_future().wait(); });
        window_->action(ActionId::select_all)->trigger();
        QTest::qWait(20);
        const std::size_t meanwhile = selected();
        go_on.set_value();
        QVERIFY(wait_until([this] { return selected() > 0; }));
        QCOMPARE(meanwhile, std::size_t{0});
    }

    void selects_nothing_while_a_file_is_written()
    {
        const std::filesystem::path pipe = path("pipe.lwo");
        QCOMPARE(::mkfifo(pipe.c_str(), 0600), 0);
        // What was drawn around is known when the file is half written.
        const desktop::Picked picked{
            std::vector<picture::PolygonId>{{0, 3}}, {0, 1}, desktop::SelectMode::replace};
        std::size_t meanwhile = 1;
        std::thread reader;
        QTimer::singleShot(20, window_.get(), [&] {
            emit window_->picked(picked);
            QTimer::singleShot(50, window_.get(), [&] {
                meanwhile = selected();
                reader = std::thread([&] { (void)support::bytes_of(pipe); });
            });
        });
        QVERIFY(window_->save_to(pipe, true));
        reader.join();
        QCOMPARE(meanwhile, std::size_t{0});
        QVERIFY(wait_until([this] { return selected() == 1; }));
    }

    void tells_of_a_file_that_grows_past_a_limit()
    {
        rlimit old{};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &old), 0);
        const rlimit small{1000, old.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        const bool saved = window_->save_to(path("small.lwo"), false);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &old), 0);
        QVERIFY(!saved);
        QVERIFY2(message.contains("too large"), qPrintable(message));
        QVERIFY(!std::filesystem::exists(path("small.lwo")));
    }

    void asks_before_a_file_of_the_scene_is_replaced_by_whatever_name()
    {
        const std::filesystem::path ground = path("ground.lwo");
        std::filesystem::copy_file(example("terrain.lwo"), ground);
        std::filesystem::create_symlink(ground, path("symbolic.lwo"));
        std::filesystem::create_hard_link(ground, path("hard.lwo"));
        QVERIFY(window_->open({ground, example("tree.lwo")}));
        const std::string bytes = support::bytes_of(ground);
        for (const char* const name : {"ground.lwo", "symbolic.lwo", "hard.lwo"}) {
            for (const bool foreground_only : {false, true}) {
                QString message;
                support::answer_box(QMessageBox::Cancel, message);
                QVERIFY(!window_->save_to(path(name), foreground_only));
                QVERIFY2(message.contains(name) && message.contains("ground.lwo"),
                         qPrintable(message));
            }
            QCOMPARE(support::bytes_of(ground), bytes);
        }
        QString message;
        support::answer_box(QMessageBox::Yes, message);
        QVERIFY(window_->save_to(path("symbolic.lwo"), true));
        QVERIFY(std::filesystem::is_symlink(path("symbolic.lwo")));
    }

    void exports_no_settings_over_a_file_of_the_scene()
    {
        const std::filesystem::path ground = path("hill.lwo");
        std::filesystem::copy_file(example("terrain.lwo"), ground);
        std::filesystem::create_symlink(ground, path("hill.json"));
        QVERIFY(window_->open({ground, example("tree.lwo")}));
        at_rest();
        QString message;
        support::run_command(*window_, [&](desktop::PanelDialog& dialog) {
            auto* const presets = dialog.findChild<desktop::PresetBar*>();
            presets->export_file(path("hill.json"));
            message = dialog.message();
            presets->export_file(path("settings.json"));
            dialog.reject();
        });
        QVERIFY2(message.contains("hill.json is a file of this scene"), qPrintable(message));
        QCOMPARE(support::bytes_of(ground), support::bytes_of(example("terrain.lwo")));
        QVERIFY(std::filesystem::exists(path("settings.json")));
    }

    void saves_the_scenes_own_file_without_asking()
    {
        const std::filesystem::path file = path("own.lwo");
        QVERIFY(window_->save_to(file, false));
        QVERIFY(window_->save_to(file, false));
        std::filesystem::create_symlink(file, path("own-link.lwo"));
        QVERIFY(window_->save_to(path("own-link.lwo"), false));
    }

    void keeps_the_scene_when_the_window_runs_out_of_memory()
    {
        const auto both = [this] { window_->open({example("terrain.lwo"), example("tree.lwo")}); };
        try_many(both, [this] { window_->add({example("stone.lwo")}); });
        try_many(both, [this] { window_->open({example("stone.lwo")}); });
        try_many(
            both, [this] { window_->set_role(1, modeler::LayerRole::hidden); }, 20);
        try_many(
            both, [this] { window_->action(ActionId::select_all)->trigger(); }, 20);
        try_many(
            both, [this] { window_->save_to(path("saved.lwo"), false); }, 20);
    }
};

} // namespace

int main(int count, char** arguments)
{
    FailureTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "failure_test.moc"
