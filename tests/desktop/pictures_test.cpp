// SPDX-License-Identifier: MIT
// Pictures of the view: size, background, what is in them, progress and cancel.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QImage>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

#include "desktop/pictures/picture_dialog.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::PictureBackground;
using desktop::PictureDialog;
using desktop::PictureOptions;
using support::example;
using support::wait_until;

class PicturesTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    std::unique_ptr<MainWindow> window_;

    [[nodiscard]] std::filesystem::path path(const char* name) const
    {
        return folder_.filePath(name).toStdString();
    }

    /// A small picture of the view.
    [[nodiscard]] QImage picture(const std::function<void(PictureOptions&)>& change)
    {
        PictureOptions options = window_->shown_picture();
        options.width = 180;
        options.height = 120;
        change(options);
        if (!window_->export_picture_to(path("view.png"), options, 2))
            throw std::runtime_error("no picture was written");
        return QImage(folder_.filePath("view.png"));
    }

    static int different_pixels(const QImage& a, const QImage& b)
    {
        int count = 0;
        for (int y = 0; y < a.height(); ++y)
            for (int x = 0; x < a.width(); ++x)
                count += a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
        return count;
    }

private Q_SLOTS:
    void init()
    {
        QSettings().clear();
        window_ = std::make_unique<MainWindow>();
        window_->resize(900, 600);
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(wait_until(
            [this] { return !window_->tracer().reading() && window_->tracer().passes() > 0; }));
        window_->viewport().zoom(1.6); // so that there is nothing at the corners
    }
    void cleanup() { window_.reset(); }

    void has_the_size_that_was_asked_for()
    {
        const QImage plain = picture([](PictureOptions&) {});
        QCOMPARE(plain.size(), QSize(180, 120));
        QVERIFY(!plain.allGray());
        QVERIFY(!plain.hasAlphaChannel());
        QCOMPARE(picture([](PictureOptions& options) { options.width = 40; }).size(),
                 QSize(40, 120));
    }

    void stands_on_a_transparent_or_white_background()
    {
        const auto bare = [](PictureOptions& options) { options.grid = options.axes = false; };
        const QImage clear = picture([&](PictureOptions& options) {
            bare(options);
            options.background = PictureBackground::transparent;
        });
        QVERIFY(clear.hasAlphaChannel());
        for (const QPoint corner : {QPoint(0, 0), QPoint(179, 0), QPoint(0, 119), QPoint(179, 119)})
            QCOMPARE(clear.pixelColor(corner).alpha(), 0);
        QCOMPARE(clear.pixelColor(90, 60).alpha(), 255);
        const QImage white = picture([&](PictureOptions& options) {
            bare(options);
            options.background = PictureBackground::white;
        });
        QVERIFY(!white.hasAlphaChannel());
        QCOMPARE(white.pixelColor(0, 0), QColor(Qt::white));
        QCOMPARE(white.pixelColor(179, 119), QColor(Qt::white));
        const QImage shown = picture(bare);
        // Where the ground covers all, the background makes no difference.
        QCOMPARE(clear.pixelColor(90, 60).rgb(), shown.pixelColor(90, 60).rgb());
        QCOMPARE(white.pixelColor(90, 60), shown.pixelColor(90, 60));
    }

    void shows_grid_axes_and_selection_where_they_are_wanted()
    {
        const auto with = [&](bool grid, bool axes, bool selection) {
            return picture([&](PictureOptions& options) {
                options.grid = grid;
                options.axes = axes;
                options.selection = selection;
            });
        };
        const QImage bare = with(false, false, false);
        QVERIFY(different_pixels(bare, with(true, false, false)) > 50);
        QVERIFY(different_pixels(bare, with(false, true, false)) > 10);
        window_->action(ActionId::select_all)->trigger();
        QVERIFY(wait_until([this] { return window_->tracer().look().selected != nullptr; }));
        QCOMPARE(with(false, false, false), bare);
        QVERIFY(different_pixels(bare, with(false, false, true)) > 1000);
    }

    void shows_how_far_it_is_and_can_be_cancelled()
    {
        PictureOptions options = window_->shown_picture();
        options.width = options.height = 2000;
        int most_seen = 0;
        QElapsedTimer since_cancel;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* const box = QApplication::activeModalWidget();
            if (box == nullptr || box->objectName() != "work")
                return;
            most_seen = std::max(most_seen, box->findChild<QProgressBar*>()->value());
            if (most_seen > 0 && !since_cancel.isValid()) {
                since_cancel.start();
                box->findChild<QPushButton*>()->click();
            }
        });
        watch.start(std::chrono::milliseconds(5));
        QVERIFY(!window_->export_picture_to(path("never.png"), options, 4096));
        QVERIFY(most_seen > 0 && most_seen < 900);
        QVERIFY(since_cancel.isValid());
        QVERIFY2(since_cancel.elapsed() < 5000,
                 qPrintable(QString::number(since_cancel.elapsed())));
        QVERIFY(!std::filesystem::exists(path("never.png")));
        QVERIFY(wait_until([this] { return window_->tracer().passes() > 0; })); // and goes on
    }

    void replaces_no_file_of_the_scene()
    {
        std::filesystem::copy_file(example("terrain.lwo"), path("ground.lwo"));
        std::filesystem::create_symlink(path("ground.lwo"), path("link.png"));
        QVERIFY(window_->open({path("ground.lwo")}));
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
        QString message;
        support::answer_box(QMessageBox::Ok, message);
        QVERIFY(!window_->export_picture_to(path("link.png"), window_->shown_picture(), 1));
        QVERIFY2(message.contains("file of this scene"), qPrintable(message));
        QCOMPARE(support::bytes_of(path("ground.lwo")), support::bytes_of(example("terrain.lwo")));
    }

    void asks_what_the_picture_is_to_be_like()
    {
        PictureOptions shown = window_->shown_picture();
        shown.axes = false;
        {
            PictureDialog dialog(shown, window_.get());
            QCOMPARE(dialog.options().width, shown.width);
            QCOMPARE(dialog.options().height, shown.height);
            QVERIFY(dialog.options().grid && !dialog.options().axes && dialog.options().selection);
            auto* const sizes = dialog.findChild<QComboBox*>("sizes");
            sizes->setCurrentIndex(1);
            emit sizes->activated(1);
            QCOMPARE(dialog.options().width, 2 * shown.width);
            dialog.findChild<QSpinBox*>("width")->setValue(16384);
            QCOMPARE(sizes->currentText(), "As typed");
            dialog.findChild<QSpinBox*>("height")->setValue(16384); // too many pixels together
            QPushButton* go_on = nullptr;
            for (QPushButton* const button : dialog.findChildren<QPushButton*>())
                if (button->isDefault())
                    go_on = button;
            QVERIFY(go_on != nullptr && !go_on->isEnabled());
            dialog.findChild<QSpinBox*>("height")->setValue(100);
            QVERIFY(go_on->isEnabled());
            // Guides are off in a transparent picture, until they are wanted there.
            auto* const background = dialog.findChild<QComboBox*>("background");
            background->setCurrentIndex(2);
            QVERIFY(!dialog.options().grid && !dialog.options().selection);
            background->setCurrentIndex(1);
            QVERIFY(dialog.options().grid && !dialog.options().axes && dialog.options().selection);
            background->setCurrentIndex(2);
            go_on->click();
            QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
        }
        const PictureDialog next(shown, window_.get());
        QCOMPARE(next.options().width, 16384);
        QCOMPARE(next.options().height, 100);
        QCOMPARE(next.options().background, PictureBackground::transparent);
        QVERIFY(!next.options().grid && !next.options().axes && !next.options().selection);
    }

    void goes_from_the_key_to_a_picture()
    {
        const QString file = folder_.filePath("by-key.png");
        QStringList seen;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            auto* const box = QApplication::activeModalWidget();
            if (auto* const dialog = qobject_cast<PictureDialog*>(box)) {
                if (seen.isEmpty()) {
                    seen << "options";
                    dialog->findChild<QSpinBox*>("width")->setValue(64);
                    dialog->findChild<QSpinBox*>("height")->setValue(48);
                    dialog->accept();
                }
            } else if (auto* const files = qobject_cast<QFileDialog*>(box)) {
                if (seen.size() == 1) {
                    seen << QFileInfo(files->selectedFiles().value(0)).fileName();
                    files->selectFile(file);
                    QMetaObject::invokeMethod(files, "accept");
                }
            }
        });
        watch.start(std::chrono::milliseconds(5));
        QTest::keyClick(window_.get(), Qt::Key_F12);
        QCOMPARE(seen, (QStringList{"options", "terrain.png"}));
        QCOMPARE(QImage(file).size(), QSize(64, 48));
    }
};

} // namespace

int main(int count, char** arguments)
{
    PicturesTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "pictures_test.moc"
