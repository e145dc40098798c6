// SPDX-License-Identifier: MIT
// The panel's place in the window: docked beside the view, or where the user put it.
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QLayout>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolBar>
#include <QToolTip>
#include <QTreeWidget>

#include "desktop/panel/control_slot.h"
#include "desktop/panel/panel_dock.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"

namespace {

using desktop::MainWindow;
using desktop::PanelDialog;
using desktop::PanelDock;
using support::example;

PanelDock& dock_of(PanelDialog& dialog) { return *dynamic_cast<PanelDock*>(dialog.parentWidget()); }

QRect place_on_screen(const QWidget& widget)
{
    return {widget.mapToGlobal(QPoint()), widget.size()};
}

void press_cancel(PanelDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }

class DockTest : public QObject {
    Q_OBJECT

private:
    void open_window(const QSize& size)
    {
        window_ = std::make_unique<MainWindow>();
        window_->resize(size);
        window_->load_module();
        window_->show();
        QVERIFY(window_->open({example("terrain.lwo"), example("tree.lwo")}));
        QVERIFY(support::wait_until([this] { return !window_->tracer().reading(); }));
    }

    std::unique_ptr<MainWindow> window_;

private Q_SLOTS:
    void init() { QSettings().clear(); }
    void cleanup() { window_.reset(); }

    void clamps_to_the_screens_data()
    {
        QTest::addColumn<QRect>("wanted");
        QTest::addColumn<QRect>("clamped");
        QTest::newRow("within") << QRect(10, 20, 300, 400) << QRect(10, 20, 300, 400);
        QTest::newRow("past the right edge")
            << QRect(2900, 20, 300, 400) << QRect(2700, 20, 300, 400);
        QTest::newRow("above and before") << QRect(-50, -60, 300, 400) << QRect(0, 0, 300, 400);
        QTest::newRow("larger than the screen")
            << QRect(-50, -60, 1500, 900) << QRect(0, 0, 1000, 800);
        QTest::newRow("on the second screen")
            << QRect(1100, 100, 300, 400) << QRect(1100, 100, 300, 400);
        QTest::newRow("across both") << QRect(950, 100, 300, 400) << QRect(1000, 100, 300, 400);
        QTest::newRow("a screen that is gone")
            << QRect(-4000, 100, 300, 400) << QRect(0, 100, 300, 400);
    }

    void clamps_to_the_screens()
    {
        QFETCH(QRect, wanted);
        QFETCH(QRect, clamped);
        const QList<QRect> screens{QRect(0, 0, 1000, 800), QRect(1000, 0, 2000, 1500)};
        QCOMPARE(desktop::clamp_to_screens(wanted, screens), clamped);
        QCOMPARE(desktop::clamp_to_screens(wanted, {}), wanted);
    }

    void leaves_the_view_to_be_seen_and_the_buttons_to_be_pressed()
    {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        for (const QSize& size : {QSize(1200, 760).boundedTo(screen.size()), QSize(400, 300)}) {
            open_window(size);
            const QSize before = window_->size();
            support::run_command(*window_, [&](PanelDialog& dialog) {
                QVERIFY(!dock_of(dialog).isFloating());
                QCOMPARE(window_->size(), before);
                const QRect window = place_on_screen(*window_);
                auto* const tabs = dialog.findChild<QTabWidget*>();
                for (int tab = 0; tab < tabs->count(); ++tab) {
                    tabs->setCurrentIndex(tab);
                    for (const QPushButton* button :
                         dialog.findChild<QDialogButtonBox*>()->findChildren<QPushButton*>()) {
                        QVERIFY(button->visibleRegion().boundingRect() == button->rect());
                        QVERIFY(window.contains(place_on_screen(*button)));
                    }
                }
                const desktop::Viewport& view = window_->viewport();
                QVERIFY(!place_on_screen(view).intersects(place_on_screen(dialog)));
                if (size.width() > 1000)
                    QVERIFY(view.width() > window_->width() / 3);
                press_cancel(dialog);
            });
            QVERIFY(window_->findChild<QWidget*>("panel dock") == nullptr);
            QCOMPARE(window_->size(), before);
            QVERIFY(window_->action(desktop::ActionId::show_lists)->isChecked());
        }
    }

    void scrolls_to_the_control_that_has_the_keyboard()
    {
        open_window({400, 300});
        support::run_command(*window_, [&](PanelDialog& dialog) {
            auto* const seed = dynamic_cast<desktop::ControlSlot*>(
                dialog.findChild<QWidget*>("Random Seed")); // the last one of its tab
            QVERIFY(seed->visibleRegion().isEmpty());
            dialog.findChild<QWidget*>("About")->setFocus();
            support::type(seed->editor().widget(), "many");
            QTest::keyClick(&dialog, Qt::Key_Return); // OK goes to the text that is no number
            QVERIFY(dialog.isVisible());
            QVERIFY(seed->editor().widget()->hasFocus());
            QVERIFY(!seed->visibleRegion().isEmpty());
            press_cancel(dialog);
        });
    }

    void keeps_its_place_when_a_tab_is_clicked()
    {
        open_window({500, 400});
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        support::run_command(*window_, [&](PanelDialog& dialog) {
            auto* const tabs = dialog.findChild<QTabWidget*>();
            const auto* const scroll = dialog.findChild<QScrollArea*>();
            // The keyboard is in the last control of a tab, and the form is scrolled to its top.
            dynamic_cast<desktop::ControlSlot*>(dialog.findChild<QWidget*>("Random Seed"))->focus();
            scroll->verticalScrollBar()->setValue(0);
            QVERIFY(scroll->verticalScrollBar()->maximum() > 0);
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {},
                              tabs->tabBar()->tabRect(1).center());
            QCOMPARE(tabs->currentIndex(), 1);
            QCOMPARE(scroll->verticalScrollBar()->value(), 0);
            QVERIFY(tabs->tabBar()->hasFocus());
            press_cancel(dialog);
        });
    }

    void remembers_where_it_floats_and_how_wide_it_stands()
    {
        open_window({780, 700});
        const QRect wanted(60, 40, 330, 300);
        support::run_command(*window_, [&](PanelDialog& dialog) {
            window_->resizeDocks({&dock_of(dialog)}, {400}, Qt::Horizontal);
            window_->layout()->activate();
            press_cancel(dialog);
        });
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QCOMPARE(dock_of(dialog).width(), 400);
            window_->addDockWidget(Qt::LeftDockWidgetArea, &dock_of(dialog));
            press_cancel(dialog);
        });
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QCOMPARE(window_->dockWidgetArea(&dock_of(dialog)), Qt::LeftDockWidgetArea);
            dock_of(dialog).setFloating(true);
            dock_of(dialog).setGeometry(wanted);
            press_cancel(dialog);
        });
        window_.reset();
        open_window({780, 700}); // also in the next session
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QVERIFY(dock_of(dialog).isFloating());
            QCOMPARE(dock_of(dialog).geometry(), wanted);
            press_cancel(dialog);
        });
        QSettings().setValue("panel/geometry", QRect(-9000, 40, 330, 300)); // on a screen now gone
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(
                dock_of(dialog).geometry()));
            press_cancel(dialog);
        });
    }

    void gives_the_lists_their_width_back()
    {
        open_window({780, 600});
        auto* const lists = window_->findChild<QDockWidget*>("lists");
        const int before = lists->width();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            // Shown beside the panel, the lists are squeezed.
            if (!lists->isVisible())
                window_->action(desktop::ActionId::show_lists)->trigger();
            window_->resizeDocks({lists}, {60}, Qt::Horizontal);
            window_->layout()->activate();
            QVERIFY(lists->width() < before);
            press_cancel(dialog);
        });
        window_->layout()->activate();
        QCOMPARE(lists->width(), before);
    }

    void resets_the_layout()
    {
        open_window({900, 600});
        auto* const lists = window_->findChild<QDockWidget*>("lists");
        auto* const bar = window_->findChild<QToolBar*>("commands");
        const int width = lists->width();
        QAction* const reset = window_->action(desktop::ActionId::reset_layout);
        window_->addDockWidget(Qt::RightDockWidgetArea, lists);
        window_->resizeDocks({lists}, {500}, Qt::Horizontal);
        window_->addToolBar(Qt::BottomToolBarArea, bar);
        bar->hide();
        window_->action(desktop::ActionId::show_lists)->trigger();
        reset->trigger();
        window_->layout()->activate();
        QVERIFY(lists->isVisible());
        QVERIFY(window_->action(desktop::ActionId::show_lists)->isChecked());
        QCOMPARE(window_->dockWidgetArea(lists), Qt::LeftDockWidgetArea);
        QCOMPARE(lists->width(), width);
        QVERIFY(bar->isVisible());
        QCOMPARE(window_->toolBarArea(bar), Qt::TopToolBarArea);
        support::run_command(*window_, [&](PanelDialog& dialog) {
            dock_of(dialog).setFloating(true);
            QVERIFY(reset->isEnabled());
            reset->trigger();
            QVERIFY(!dock_of(dialog).isFloating());
            window_->addDockWidget(Qt::LeftDockWidgetArea, &dock_of(dialog));
            press_cancel(dialog);
        });
        reset->trigger();
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QCOMPARE(window_->dockWidgetArea(&dock_of(dialog)), Qt::RightDockWidgetArea);
            press_cancel(dialog);
        });
    }

    void fits_the_view_beside_it_where_everything_was_in_view()
    {
        open_window({780, 500});
        desktop::Viewport& view = window_->viewport();
        QVERIFY(support::wait_until([&] { return view.is_fitted() && view.shows_all(); }));
        const picture::Camera before = view.camera();
        const auto is_moved = [&] { return !(view.camera() == before); };
        support::run_command(*window_, {{is_moved, [&](PanelDialog& dialog) {
                                             QVERIFY(view.shows_all());
                                             press_cancel(dialog);
                                         }}});
        QVERIFY(view.camera() == before);
        // A place that was gone to is left alone.
        view.zoom(0.2);
        const picture::Camera near = view.camera();
        QVERIFY(!view.shows_all());
        support::run_command(*window_, {{[] { return true; },
                                         [&](PanelDialog& dialog) {
                                             QTest::qWait(1);
                                             QVERIFY(view.camera() == near);
                                             press_cancel(dialog);
                                         }}});
        QVERIFY(view.camera() == near);
        // And so is one that was gone to while the panel was open.
        view.fit();
        QVERIFY(support::wait_until([&] { return view.is_fitted() && view.shows_all(); }));
        const picture::Camera again = view.camera();
        picture::Camera turned;
        support::run_command(*window_, {{[&] { return !(view.camera() == again); },
                                         [&](PanelDialog& dialog) {
                                             view.orbit(10.0, 0.0);
                                             turned = view.camera();
                                             press_cancel(dialog);
                                         }}});
        QVERIFY(view.camera() == turned);
    }

    void says_why_the_lists_are_grey()
    {
        open_window({1200, 600});
        window_->lists().setVisible(true);
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QVERIFY(!window_->lists().isEnabled());
            if (!window_->lists().isVisible())
                window_->action(desktop::ActionId::show_lists)->trigger();
            QWidget* const list = window_->lists().layers().viewport();
            QHelpEvent help(QEvent::ToolTip, {5, 5}, list->mapToGlobal(QPoint(5, 5)));
            QApplication::sendEvent(list, &help);
            QVERIFY2(QToolTip::text().contains("while a panel is open"),
                     qPrintable(QToolTip::text()));
            const auto* const recent = window_->findChild<QMenu*>("recent");
            QVERIFY(!recent->menuAction()->isEnabled());
            press_cancel(dialog);
        });
        QVERIFY(window_->findChild<QMenu*>("recent")->menuAction()->isEnabled());
    }

    void takes_the_keyboard_and_gives_it_back()
    {
        open_window({780, 700});
        window_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window_.get()));
        support::run_command(*window_, [&](PanelDialog& dialog) {
            QTest::keyClick(window_->windowHandle(), Qt::Key_Up); // one clone more
            QCOMPARE(
                dynamic_cast<desktop::ControlSlot*>(dialog.findChild<QWidget*>("Number of Clones"))
                    ->findChild<QLineEdit*>()
                    ->text(),
                "31");
            QTest::keyClick(window_->windowHandle(), Qt::Key_Escape);
            QVERIFY(!dialog.isVisible());
        });
        QVERIFY(window_->viewport().hasFocus());
    }

    void is_cancelled_by_closing_it()
    {
        open_window({780, 700});
        const std::size_t before =
            window_->workspace().session().document().layers[0].points.size();
        support::run_command(*window_, [&](PanelDialog& dialog) { dock_of(dialog).close(); });
        QCOMPARE(window_->workspace().session().document().layers[0].points.size(), before);
        QVERIFY(window_->commands().at(0)->isEnabled());
    }

    void keeps_the_keys_of_its_controls_from_the_menus()
    {
        open_window({780, 700});
        support::run_command(*window_, [&](PanelDialog& dialog) {
            window_->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(window_.get()));
            auto* const list = dynamic_cast<QComboBox*>(
                dynamic_cast<desktop::ControlSlot*>(dialog.findChild<QWidget*>("Density WeightMap"))
                    ->editor()
                    .widget());
            QWidget* const button = dialog.findChild<QWidget*>("Zero Angles");
            const bool grid = window_->action(desktop::ActionId::grid)->isChecked();
            const double elevation = window_->viewport().camera().elevation_deg;
            list->setFocus();
            QTest::keyClick(window_->windowHandle(), Qt::Key_End); // as from the window's system
            QCOMPARE(list->currentIndex(), list->count() - 1);
            QTest::keyClick(window_->windowHandle(), Qt::Key_Home); // "Fit" in the View menu
            QCOMPARE(list->currentIndex(), 0);
            dynamic_cast<desktop::ControlSlot*>(button)->focus();
            QTest::keyClick(window_->windowHandle(), Qt::Key_G); // "Grid"
            QTest::keyClick(window_->windowHandle(), Qt::Key_7); // "Top"
            QCOMPARE(window_->action(desktop::ActionId::grid)->isChecked(), grid);
            QCOMPARE(window_->viewport().camera().elevation_deg, elevation);
            window_->viewport().setFocus();
            QTest::keyClick(window_->windowHandle(), Qt::Key_G);
            QCOMPARE(window_->action(desktop::ActionId::grid)->isChecked(), !grid);
            press_cancel(dialog);
        });
    }
};

} // namespace

int main(int count, char** arguments)
{
    DockTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "dock_test.moc"
