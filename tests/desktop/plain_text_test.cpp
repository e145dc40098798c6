// SPDX-License-Identifier: MIT
// Names from files and modules are shown as they are: no markup in them is obeyed, no picture that
// they name is loaded, no control character gets through.
#include <fstream>

#include <QApplication>
#include <QDir>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>

#include <sys/inotify.h>
#include <unistd.h>

#include "desktop/message_box.h"
#include "desktop/text.h"
#include "desktop/window/main_window.h"
#include "formats/lwo2_writer.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using support::wait_until;

const char* const picture = "<img src=\"picture.png\">";
const char* const bold = "<b>x</b>";
const char* const controls = "a\nb\x1b[31mc\xc2\x9b";

/// What a person sees of a text that a tooltip is made from.
QString seen(const QString& text)
{
    return Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text;
}

/// A ground with one layer, surface and map for each of the names.
mesh::Document document_of_odd_names()
{
    mesh::Document document;
    for (const char* const name : {picture, bold, controls}) {
        mesh::Layer& layer = document.layers.emplace_back();
        layer.name = name;
        layer.number = static_cast<std::uint16_t>(document.layers.size() - 1);
        for (const double x : {0.0, 1.0})
            for (const double z : {0.0, 1.0})
                layer.points.push_back({x, 0.0, z});
        layer.polygons.add(mesh::polygon_face, std::vector<std::uint32_t>{0, 1, 3, 2});
        layer.polygons.set_surface(0, document.tags.append(name));
        layer.maps.emplace_back(mesh::map_wght, name, 1);
        layer.maps.back().set(0, std::vector<float>{1.0F});
    }
    return document;
}

class PlainTextTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir folder_;
    int watch_ = -1;
    std::filesystem::path file_;
    std::unique_ptr<MainWindow> window_;

    /// Whether the picture that the names ask for was opened since the last call.
    [[nodiscard]] bool picture_was_opened() const
    {
        char events[4096];
        return ::read(watch_, events, sizeof events) > 0;
    }

    /// Closes the box that opens next, after a look at its labels.
    static void look_at_box(QStringList& texts)
    {
        auto* const watch = new QTimer(qApp);
        connect(watch, &QTimer::timeout, watch, [watch, &texts] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr)
                return;
            watch->deleteLater();
            watch->stop();
            texts << box->windowTitle();
            for (const QLabel* const label : box->findChildren<QLabel*>()) {
                if (label->text().isEmpty())
                    continue;
                QCOMPARE(label->textFormat(), Qt::PlainText);
                texts << label->text();
            }
            box->button(QMessageBox::Ok)->click();
        });
        watch->start(std::chrono::milliseconds(1));
    }

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir::setCurrent(folder_.path()));
        QImage(64, 64, QImage::Format_RGB32).save("picture.png");
        file_ = folder_.filePath("<img src=\"picture.png\">[*].lwo").toStdString();
        formats::write_lwo2_file(document_of_odd_names(), file_);
        watch_ = ::inotify_init1(IN_NONBLOCK);
        QVERIFY(::inotify_add_watch(watch_, "picture.png", IN_OPEN) >= 0);
        QVERIFY(!QImage("picture.png").isNull());
        QVERIFY(picture_was_opened()); // so it would be noticed
    }
    void init()
    {
        window_ = std::make_unique<MainWindow>();
        window_->show();
        window_->load_module();
        QVERIFY(window_->open({file_}));
        QVERIFY(wait_until([this] { return !window_->tracer().reading(); }));
    }
    void cleanup()
    {
        window_.reset();
        QVERIFY(!picture_was_opened());
    }
    void cleanupTestCase() { ::close(watch_); }

    void shows_names_in_the_lists_as_they_are()
    {
        const QString clean = "a\\x0Ab\\x1B[31mc\\xC2\\x9B";
        for (const QTreeWidget* const list :
             {&window_->lists().layers(), &window_->lists().surfaces()}) {
            QCOMPARE(list->topLevelItemCount(), 3);
            QVERIFY(list->topLevelItem(0)->text(0).startsWith(picture));
            QVERIFY(list->topLevelItem(1)->text(0).startsWith(bold));
            QVERIFY2(list->topLevelItem(2)->text(0).startsWith(clean),
                     qPrintable(list->topLevelItem(2)->text(0)));
        }
        for (const QTreeWidget* const list : window_->lists().findChildren<QTreeWidget*>())
            for (int i = 0; i < list->topLevelItemCount(); ++i) {
                const QString tip = list->topLevelItem(i)->toolTip(0);
                if (list->objectName() == "Layers")
                    QVERIFY2(seen(tip).contains("<img src=\"picture.png\">[*].lwo"),
                             qPrintable(tip));
                else
                    QCOMPARE(seen(tip), list->topLevelItem(i)->text(0));
                QToolTip::showText(QPoint(10, 10), tip, window_.get());
                QTest::qWait(1);
            }
        QToolTip::hideText();
    }

    void shows_the_files_name_in_the_title()
    {
        QVERIFY2(window_->windowTitle().startsWith("<img src=\"picture.png\">[*][*].lwo[*]"),
                 qPrintable(window_->windowTitle()));
    }

    void shows_what_a_command_says_as_it_is()
    {
        QStringList texts;
        look_at_box(texts);
        window_->front_end().info(picture, bold);
        look_at_box(texts);
        window_->front_end().error(controls, "");
        QVERIFY(texts.contains(picture) && texts.contains(bold));
        QVERIFY2(texts.contains("a\nb\\x1B[31mc\\xC2\\x9B"), qPrintable(texts.join('|')));
        window_->front_end().set_command(controls);
        const auto progress = window_->front_end().begin_progress("a module's title", picture);
        progress->start(2);
        const QWidget* const box = QApplication::activeModalWidget();
        QVERIFY(box != nullptr);
        QCOMPARE(box->windowTitle(), "a\\x0Ab\\x1B[31mc\\xC2\\x9B");
        QCOMPARE(box->findChild<QLabel*>()->text(), picture);
        QCOMPARE(box->findChild<QLabel*>()->textFormat(), Qt::PlainText);
        progress->finish();
    }

    void shows_the_name_of_a_file_that_cannot_be_read()
    {
        const auto bad = folder_.filePath("<img src=\"picture.png\">\x1b.lwo").toStdString();
        std::ofstream(bad) << "no object";
        QStringList texts;
        look_at_box(texts);
        QVERIFY(!window_->open({bad}));
        QVERIFY2(texts.join('|').contains("<img src=\"picture.png\">\\x1B.lwo"),
                 qPrintable(texts.join('|')));
    }

    void cuts_long_names_in_the_middle_and_has_them_in_the_details()
    {
        const QString name = QString(100, 'a') + QString(100, 'b') + ".lwo";
        const desktop::MessageBox box(QMessageBox::Question, "Unsaved Changes",
                                      "Save the changes to " + name + "?", "or to " + name,
                                      QMessageBox::Save, nullptr);
        for (const QString& text : {box.text(), box.informativeText()}) {
            QVERIFY2(text.contains(QString::fromUtf8("aaa\u2026bbb")), qPrintable(text));
            QVERIFY(text.size() < 100);
        }
        QCOMPARE(box.detailedText(), "Save the changes to " + name + "?\n\nor to " + name);
        const desktop::MessageBox plain(QMessageBox::Question, "Unsaved Changes",
                                        "Save the changes to hill.lwo?", {}, QMessageBox::Save,
                                        nullptr);
        QCOMPARE(plain.text(), "Save the changes to hill.lwo?");
        QCOMPARE(plain.detailedText(), QString());
    }

    void reads_no_markup_in_a_label_that_was_told_nothing()
    {
        QLabel label(picture);
        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        QCOMPARE(label.textFormat(), Qt::PlainText);
    }

    void keeps_marks_of_keys_and_changes_out_of_names()
    {
        QCOMPARE(desktop::in_menu("a&b"), "a&&b");
        QCOMPARE(desktop::without_placeholder("a[*]b"), "a[*][*]b");
        QCOMPARE(seen(desktop::tool_tip("<b>x</b>\n&amp;")), "<b>x</b>\n&amp;");
    }
};

} // namespace

int main(int count, char** arguments)
{
    PlainTextTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "plain_text_test.moc"
