// SPDX-License-Identifier: MIT
#include "desktop/application.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <utility>

#include <QEvent>
#include <QLabel>

#include "desktop/theme.h"
#include "mesh/printable.h"

namespace desktop {

namespace {

/// Does not affect tool tips: they need HTML for word wrap (see `tool_tip`).
void read_as_plain_text(QObject* receiver)
{
    auto* const label = qobject_cast<QLabel*>(receiver);
    if (label != nullptr && label->textFormat() == Qt::AutoText && !label->inherits("QTipLabel"))
        label->setTextFormat(Qt::PlainText);
}

void make_grey_readable()
{
    const QPalette palette = with_readable_grey(QApplication::palette());
    if (palette != QApplication::palette())
        QApplication::setPalette(palette);
}

} // namespace

void write_problem(std::string_view what)
{
    (void)std::fputs("dastrel-modeler: ", stderr);
    mesh::write_printable(what, [](std::string_view piece) {
        (void)std::fwrite(piece.data(), 1, piece.size(), stderr);
    });
    (void)std::fputs("\n", stderr);
}

Application::Application(int& count, char** arguments) : QApplication(count, arguments)
{
    (void)std::signal(SIGXFSZ, SIG_IGN);
    (void)std::signal(SIGPIPE, SIG_IGN);
    report_timer_.setSingleShot(true);
    connect(&report_timer_, &QTimer::timeout, this, &Application::report);
    make_grey_readable();
}

void Application::set_failure_handler(std::function<void(std::string_view)> handler)
{
    handler_ = std::move(handler);
}

bool Application::notify(QObject* receiver, QEvent* event)
{
    try {
        if (event->type() == QEvent::Polish)
            read_as_plain_text(receiver);
        return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
        record("there is too little memory for that");
    } catch (const std::exception& error) {
        record(error.what());
    } catch (...) {
        record("an error without a description");
    }
    return true;
}

bool Application::event(QEvent* event)
{
    const bool taken = QApplication::event(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        make_grey_readable();
    return taken;
}

void Application::record(const char* what) noexcept
{
    if (what_.front() == '\0') {
        const std::size_t length = std::min(std::strlen(what), what_.size() - 1);
        std::memcpy(what_.data(), what, length);
        what_[length] = '\0';
    }
    report_timer_.start(0);
}

void Application::report()
{
    const auto what = std::exchange(what_, {});
    if (what.front() == '\0')
        return;
    write_problem(what.data());
    if (handler_)
        handler_(what.data());
}

} // namespace desktop
