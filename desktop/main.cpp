// SPDX-License-Identifier: MIT
#include <exception>
#include <new>

#include <QCommandLineParser>

#include "desktop/application.h"
#include "desktop/text.h"
#include "desktop/window/main_window.h"

namespace {

int run(int count, char** arguments)
{
    desktop::Application application(count, arguments);
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
    application.set_failure_handler([&](std::string_view what) { window.report_failure(what); });
    window.show();
    window.load_module();
    desktop::MainWindow::Paths files;
    for (const QString& file : parser.positionalArguments())
        files.push_back(desktop::to_path(file));
    if (!window.offer_kept_scenes() && !files.empty())
        window.open(files);
    return QApplication::exec();
}

} // namespace

int main(int count, char** arguments)
{
    constexpr int status_of_failure = 4;
    try {
        return run(count, arguments);
    } catch (const std::bad_alloc&) {
        desktop::write_problem("there is too little memory");
    } catch (const std::exception& error) {
        desktop::write_problem(error.what());
    }
    return status_of_failure;
}
