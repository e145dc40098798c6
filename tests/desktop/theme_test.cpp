// SPDX-License-Identifier: MIT
// Light and dark: grey text can be read, the view's background follows; the page of an empty scene,
// and long names.
#include <memory>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QSettings>
#include <QStyle>
#include <QStyleFactory>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include "desktop/theme.h"
#include "desktop/window/main_window.h"
#include "desktop/window/start_page.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::StartPage;
using support::example;
using support::wait_until;

/// A palette of these colours as themes bring it: with a disabled text that is hard to read.
QPalette palette_of(const QColor& text, const QColor& window, const QColor& base)
{
    QPalette palette(text, window, window.lighter(150), window.darker(150), window.lighter(120),
                     text, Qt::white, base, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(128, 128, 128));
    return palette;
}

class ThemeTest : public QObject {
    Q_OBJECT

private:
    QPalette first_;

    void at_rest(MainWindow& window)
    {
        QVERIFY(
            wait_until([&] { return !window.tracer().reading() && window.tracer().passes() > 0; }));
    }

private Q_SLOTS:
    void initTestCase() { first_ = QApplication::palette(); }
    void init() { QSettings().clear(); }
    void cleanup() { QApplication::setPalette(first_); }

    void knows_contrast()
    {
        QCOMPARE(desktop::contrast(Qt::white, Qt::black), 21.0);
        QCOMPARE(desktop::contrast(Qt::red, Qt::red), 1.0);
        const double grey = desktop::contrast(QColor(118, 118, 118), Qt::white);
        QVERIFY(grey > 4.5 && grey < 4.6); // the lightest grey that can be read on white
        QVERIFY(desktop::contrast(QColor(120, 120, 120), Qt::white) < 4.5);
    }

    void makes_grey_text_readable_data()
    {
        QTest::addColumn<QPalette>("palette");
        const std::unique_ptr<const QStyle> style(QStyleFactory::create("Fusion"));
        QTest::newRow("of the style") << style->standardPalette();
        QTest::newRow("light") << palette_of(Qt::black, QColor(239, 239, 239), Qt::white);
        QTest::newRow("dark") << palette_of(Qt::white, QColor(45, 45, 48), QColor(30, 30, 32));
        QTest::newRow("middling") << palette_of(Qt::black, QColor(160, 160, 160),
                                                QColor(180, 180, 180));
    }
    void makes_grey_text_readable()
    {
        QFETCH(const QPalette, palette);
        QApplication::setPalette(palette);
        QApplication::processEvents();
        const QPalette now = QApplication::palette();
        using Role = QPalette::ColorRole;
        for (const auto& [text, behind] :
             {std::pair(Role::HighlightedText, Role::Highlight),
              std::pair(Role::WindowText, Role::Window), std::pair(Role::Text, Role::Base),
              std::pair(Role::ButtonText, Role::Button),
              std::pair(Role::PlaceholderText, Role::Base)}) {
            const QColor grey = now.color(QPalette::Disabled, text);
            QCOMPARE(grey.alpha(), 255);
            const double seen = desktop::contrast(grey, now.color(QPalette::Disabled, behind));
            QVERIFY2(seen >= 4.5, qPrintable(QString::number(seen)));
            // And it is still to be told from other text.
            if (text != Role::HighlightedText)
                QVERIFY(grey != now.color(QPalette::Active, QPalette::Text));
        }
    }

    void shows_every_word_of_the_window_with_enough_contrast()
    {
        for (const bool dark : {false, true}) {
            QApplication::setPalette(
                dark ? palette_of(Qt::white, QColor(45, 45, 48), QColor(30, 30, 32))
                     : palette_of(Qt::black, QColor(239, 239, 239), Qt::white));
            MainWindow window;
            window.show();
            QApplication::processEvents();
            int labels = 0;
            for (const QLabel* const label : window.findChildren<QLabel*>()) {
                if (!label->isVisible())
                    continue;
                ++labels;
                const QPalette palette = label->palette();
                const double seen = desktop::contrast(palette.color(label->foregroundRole()),
                                                      palette.color(QPalette::Window));
                QVERIFY2(seen >= 4.5, qPrintable(label->text()));
            }
            QVERIFY(labels > 4);
        }
    }

    void changes_the_background_of_the_view_with_the_theme()
    {
        MainWindow window;
        window.show();
        QVERIFY(window.open({example("terrain.lwo")}));
        at_rest(window);
        window.viewport().zoom(1.6);
        const auto corner = [&] {
            at_rest(window);
            QTest::qWait(30);
            return window.viewport().image().pixelColor(2, 2).lightness();
        };
        QVERIFY2(corner() > 180, qPrintable(QString::number(corner())));
        QApplication::setPalette(palette_of(Qt::white, QColor(45, 45, 48), QColor(30, 30, 32)));
        QVERIFY(wait_until([&] { return corner() < 90; }));
        QApplication::setPalette(palette_of(Qt::black, QColor(239, 239, 239), Qt::white));
        QVERIFY(wait_until([&] { return corner() > 180; }));
    }

    void shows_where_to_begin_whenever_the_scene_is_empty()
    {
        const QTemporaryDir folder;
        const QString gone = folder.filePath("gone.lwo");
        const QString there = folder.filePath("there.lwo");
        QVERIFY(QFile::copy(QString::fromStdString(example("tree.lwo").string()), there));
        QSettings().setValue("recent", QStringList{gone, there});
        MainWindow window;
        window.resize(900, 600);
        window.show();
        auto* const page = window.findChild<StartPage*>();
        QVERIFY(page->isVisible());
        QCOMPARE(page->size(), window.viewport().size());
        const auto recent = [&]() -> QToolButton* {
            for (QToolButton* const button : page->findChildren<QToolButton*>())
                if (button->isVisible() && button->accessibleName() == there)
                    return button;
            return nullptr;
        };
        QVERIFY(recent() != nullptr);
        for (const QToolButton* const button : page->findChildren<QToolButton*>())
            QVERIFY(button->accessibleName() != gone);
        recent()->click();
        QVERIFY(wait_until([&] { return !window.workspace().empty(); }));
        QVERIFY(!page->isVisible());
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        window.action(ActionId::close_scene)->trigger();
        QVERIFY(wait_until([&] { return window.workspace().empty(); }));
        QVERIFY(page->isVisible());
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
        page->findChild<QToolButton*>("open examples")->click();
        QVERIFY(wait_until([&] { return !window.workspace().empty(); }));
        QCOMPARE(window.workspace().title(), "terrain.lwo + tree.lwo");
        QVERIFY(!page->isVisible());
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
    }

    void cuts_long_names_in_the_middle()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(QString(200, 'a') + ".lwo");
        QVERIFY(QFile::copy(QString::fromStdString(example("tree.lwo").string()), file));
        QSettings().setValue("recent", QStringList{file});
        MainWindow window;
        window.resize(900, 600);
        window.show();
        auto* const page = window.findChild<StartPage*>();
        const QList<QToolButton*> buttons = page->findChildren<QToolButton*>();
        const auto found = std::find_if(buttons.begin(), buttons.end(), [&](QToolButton* button) {
            return button->accessibleName() == file;
        });
        QVERIFY(found != buttons.end());
        QVERIFY((*found)->text().contains("\u2026") && (*found)->text().endsWith(".lwo"));
        QVERIFY((*found)->toolTip().contains(file));
        QVERIFY((*found)->width() <= page->width());
        QVERIFY(window.open({file.toStdString()}));
        QCOMPARE(window.lists().layers().textElideMode(), Qt::ElideMiddle);
        QVERIFY(window.lists().layers().topLevelItem(0)->toolTip(0).contains(file));
        QVERIFY(wait_until([&] { return !window.tracer().reading(); }));
    }
};

} // namespace

int main(int count, char** arguments)
{
    ThemeTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "theme_test.moc"
