// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QCommandLineParser>

#include "desktop/text.h"
#include "desktop/window/main_window.h"

int main(int count, char** arguments)
{
    const QApplication application(count, arguments);
    QApplication::setOrganizationName("dastrel");
    QApplication::setApplicationName("modeler");
    QApplication::setApplicationDisplayName("Dastrel Modeler");
    QApplication::setApplicationVersion(DASTREL_VERSION);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Scatter clones of a model over a ground, in a window.\n"
        "All files together make one scene: the first one is the ground, the others the model.");
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument("FILE", "object files to open", "[FILE...]");
    parser.process(application);

    desktop::MainWindow window;
    window.show();
    window.load_module();
    desktop::MainWindow::Paths files;
    for (const QString& file : parser.positionalArguments())
        files.push_back(desktop::to_path(file));
    if (!files.empty())
        window.open(files);
    return QApplication::exec();
}
