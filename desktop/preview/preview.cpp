// SPDX-License-Identifier: MIT
#include "desktop/preview/preview.h"

#include <chrono>
#include <exception>
#include <utility>

#include <QSocketNotifier>

#include "desktop/text.h"

namespace desktop {

using namespace std::chrono_literals;

namespace {

/// What a mesh holds, in words.
QString contents(const PreviewMesh& mesh, std::optional<int> clones)
{
    const QString size = counted_points(mesh.points) + ", " + counted_polygons(mesh.polygons);
    return clones ? counted_clones(static_cast<std::size_t>(*clones)) + " (" + size + ")" : size;
}

} // namespace

Preview::Preview(QObject* parent) : QObject(parent)
{
    settle_.setSingleShot(true);
    settle_.setInterval(80ms);
    too_long_.setSingleShot(true);
    too_long_.setInterval(1s);
    second_.setInterval(1s);
    connect(&settle_, &QTimer::timeout, this, [this] { due_ = open_ && on_; });
    connect(&too_long_, &QTimer::timeout, this, &Preview::give_up_as_slow);
    connect(&second_, &QTimer::timeout, this, &Preview::show_running);
}

Preview::~Preview() = default;

void Preview::switch_by_person(bool on)
{
    decided_ = true;
    on_ = on;
    slow_ = false;
    emit switched(on);
    cancel_run();
    if (!on)
        show_nothing(tr("off"));
    else if (wrong_)
        show_nothing(tr("none: a value is missing"));
    else
        due_ = open_;
}

void Preview::open()
{
    if (!decided_)
        on_ = true; // each scene is judged anew
    slow_ = false;
    wrong_ = false;
    open_ = true;
    due_ = on_;
    drawn_.clear();
    emit switched(on_);
    emit status(on_ ? tr("running...") : tr("off"));
}

void Preview::close()
{
    open_ = false;
    cancel_run();
}

void Preview::cancel_run()
{
    due_ = false;
    settle_.stop();
    too_long_.stop();
    second_.stop();
    done_.reset();
    run_.stop();
}

void Preview::values_changed(bool wrong)
{
    wrong_ = wrong;
    if (!on_ && !slow_)
        return;
    cancel_run();
    taken_.clear();
    emit outdated();
    if (slow_) { // other values may be faster
        slow_ = false;
        on_ = true;
        emit switched(true);
    }
    if (wrong) {
        show_nothing(tr("none: a value is missing"));
        return;
    }
    since_begin_.start();
    show_running();
    settle_.start();
}

void Preview::show_nothing(const QString& reason)
{
    drawn_.clear();
    taken_.clear();
    emit shown(nullptr);
    emit status(reason);
}

void Preview::show_running()
{
    const qint64 seconds = since_begin_.elapsed() / 1000;
    const QString running = seconds > 0 ? tr("running for %1 s").arg(seconds) : tr("running");
    emit status(drawn_.isEmpty() ? running + "..."
                                 : tr("%1; out of date in the view: %2").arg(running, drawn_));
}

bool Preview::begin(std::optional<int> clones)
{
    due_ = false;
    clones_ = clones;
    try {
        if (run_.start())
            return true;
    } catch (const std::exception& error) {
        show_nothing(tr("none: %1").arg(printable(error.what())));
        return false;
    }
    done_ = std::make_unique<QSocketNotifier>(run_.done_signal(), QSocketNotifier::Read);
    connect(done_.get(), &QSocketNotifier::activated, this, &Preview::take_result);
    if (!decided_)
        too_long_.start();
    since_begin_.start();
    second_.start();
    show_running();
    return false;
}

void Preview::take_result()
{
    too_long_.stop();
    second_.stop();
    done_->setEnabled(false); // it is telling this right now, and its file is about to be closed
    done_.release()->deleteLater();
    std::shared_ptr<PreviewMesh> mesh;
    try {
        mesh = std::make_shared<PreviewMesh>(run_.take_result());
    } catch (const std::exception& error) {
        show_nothing(tr("none: %1").arg(printable(error.what())));
        return;
    }
    drawn_.clear();
    if (!mesh->errors.empty()) {
        const modeler::Message& error = mesh->errors.front();
        emit status(error.line2.empty()
                        ? tr("none: %1").arg(printable(error.line1))
                        : tr("none: %1; %2").arg(printable(error.line1), printable(error.line2)));
    } else if (mesh->points == 0 && mesh->polygons == 0) {
        emit status(tr("these values add nothing"));
    } else {
        taken_ = contents(*mesh, clones_);
        emit status(tr("drawing %1...").arg(taken_));
    }
    emit shown(std::move(mesh));
}

void Preview::mesh_is_drawn()
{
    if (taken_.isEmpty())
        return;
    drawn_ = std::exchange(taken_, {});
    emit status(tr("showing %1").arg(drawn_));
}

void Preview::give_up_as_slow()
{
    cancel_run();
    on_ = false;
    slow_ = true;
    emit switched(false);
    show_nothing(tr("off for these values: a run takes longer than a second; switch it on to wait "
                    "for it"));
}

} // namespace desktop
