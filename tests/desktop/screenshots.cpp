// SPDX-License-Identifier: MIT
// Makes the pictures of the window that the documents show: desktop_screenshots FOLDER [dark]
// With `dark` they are as under a dark theme, for looking at them.
#include <cstdio>
#include <stdexcept>
#include <string_view>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QStyleFactory>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>

#include "desktop/application.h"
#include "desktop/panel/control_slot.h"
#include "desktop/pictures/picture_dialog.h"
#include "desktop/window/main_window.h"
#include "tests/desktop/support.h"

namespace {

using desktop::ActionId;
using desktop::MainWindow;
using desktop::PanelDialog;

constexpr unsigned good_passes = 48;

void wait_for(const std::function<bool()>& done)
{
    if (!QTest::qWaitFor(done, 300000))
        throw std::runtime_error("the window does not come to rest");
}

bool picture_is_good(MainWindow& window)
{
    return !window.tracer().reading() && window.tracer().passes() >= good_passes;
}

void wait_for_picture(MainWindow& window)
{
    wait_for([&] { return picture_is_good(window); });
    QTest::qWait(100);
}

void save(const QPixmap& picture, const QString& file)
{
    if (!picture.save(file))
        throw std::runtime_error("cannot write " + file.toStdString());
    std::printf("%s\n", qPrintable(file));
}

QWidget* field(PanelDialog& dialog, const QString& label)
{
    return dynamic_cast<desktop::ControlSlot*>(dialog.findChild<QWidget*>(label))
        ->editor()
        .widget();
}

void fill_in(PanelDialog& dialog)
{
    support::type(field(dialog, "Number of Clones"), "150");
    support::type(field(dialog, "Random rotation H Min"), "-180");
    support::type(field(dialog, "H Max"), "180");
    QTest::keyClick(field(dialog, "H Align with normals"), Qt::Key_Space);
    QTest::keyClick(field(dialog, "P Align with normals"), Qt::Key_Space);
}

void make_pictures(const QString& folder)
{
    MainWindow window;
    window.resize(1280, 800);
    window.load_module();
    window.preview().switch_by_person(true);
    window.show();
    QApplication::processEvents();
    save(window.grab(), folder + "/window-start.png");
    window.open({support::example("terrain.lwo"), support::example("tree.lwo")});
    wait_for_picture(window);
    save(window.grab(), folder + "/window-scene.png");
    QTreeWidget& maps = window.lists().maps();
    maps.setCurrentItem(maps.findItems("Density", Qt::MatchExactly).at(0));
    wait_for_picture(window);
    save(window.grab(), folder + "/window-map.png");
    maps.setCurrentItem(maps.topLevelItem(0));
    std::size_t previewed = 0;
    QObject::connect(&window.preview(), &desktop::Preview::shown, &window,
                     [&](const std::shared_ptr<const desktop::PreviewMesh>& mesh) {
                         previewed = mesh != nullptr ? mesh->points : 0;
                     });
    const auto ghost_is_drawn = [&] {
        return window.tracer().look().ghost != nullptr && picture_is_good(window);
    };
    const auto show_tabs = [&](PanelDialog& dialog) {
        auto* const dock = qobject_cast<QDockWidget*>(dialog.parentWidget());
        dock->setFloating(true); // as high as all of it
        dock->resize(dialog.sizeHint().width() + 8, 800);
        QApplication::processEvents();
        save(dialog.grab(), folder + "/panel-basic.png");
        dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
        QApplication::processEvents();
        QTest::mouseClick(dialog.findChild<QWidget*>("Dependence Power"), Qt::LeftButton);
        save(dialog.grab(), folder + "/panel-advanced.png");
        dialog.show_message({});
        dialog.findChild<QTabWidget*>()->setCurrentIndex(0);
        dock->setFloating(false);
        fill_in(dialog);
        previewed = 0;
    };
    const auto confirm = [&](PanelDialog& dialog) {
        QTest::qWait(100);
        save(window.grab(), folder + "/window-preview.png");
        QTest::keyClick(&dialog, Qt::Key_Return);
    };
    support::run_command(window, {{ghost_is_drawn, show_tabs},
                                  {[&] { return previewed > 0 && ghost_is_drawn(); }, confirm}});
    wait_for_picture(window);
    save(window.grab(), folder + "/window-forest.png");
    desktop::PictureDialog picture(window.shown_picture(), &window);
    picture.show();
    QApplication::processEvents();
    save(picture.grab(), folder + "/picture-options.png");
}

QPalette dark_palette()
{
    const QColor grey(45, 45, 48);
    const QColor faint(120, 120, 120);
    QPalette palette(Qt::white, grey, grey.lighter(150), grey.darker(150), grey.lighter(120),
                     Qt::white, Qt::white, QColor(30, 30, 32), grey);
    palette.setColor(QPalette::Highlight, QColor(42, 110, 190));
    palette.setColor(QPalette::ToolTipBase, grey);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    return palette;
}

} // namespace

int main(int count, char** arguments)
{
    const bool dark = count == 3 && std::string_view(arguments[2]) == "dark";
    if (count != 2 && !dark) {
        std::fprintf(stderr, "usage: desktop_screenshots FOLDER [dark]\n");
        return 2;
    }
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
    const desktop::Application application(count, arguments);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    if (dark)
        QApplication::setPalette(dark_palette());
    try {
        make_pictures(QString::fromLocal8Bit(arguments[1]));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "desktop_screenshots: %s\n", error.what());
        return 1;
    }
    return 0;
}
