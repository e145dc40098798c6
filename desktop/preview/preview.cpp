// SPDX-License-Identifier: MIT
#include "desktop/preview/preview.h"

#include <chrono>
#include <exception>

#include <QLocale>
#include <QSocketNotifier>

#include "desktop/text.h"

namespace desktop {

using namespace std::chrono_literals;

Preview::Preview(QObject* parent) : QObject(parent)
{
    settle_.setSingleShot(true);
    settle_.setInterval(80ms);
    too_long_.setSingleShot(true);
    too_long_.setInterval(1s);
    connect(&settle_, &QTimer::timeout, this, [this] { due_ = open_ && on_; });
    connect(&too_long_, &QTimer::timeout, this, &Preview::give_up_as_slow);
}

Preview::~Preview() = default;

void Preview::switch_by_person(bool on)
{
    decided_ = true;
    on_ = on;
    emit switched(on);
    if (on) {
        due_ = open_;
    } else {
        cancel_run();
        emit shown(nullptr);
        emit status({});
    }
}

void Preview::open()
{
    if (!decided_)
        on_ = true; // each scene is judged anew
    open_ = true;
    due_ = on_;
    emit switched(on_);
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
    done_.reset();
    run_.stop();
}

void Preview::values_changed(bool wrong)
{
    if (!on_)
        return;
    cancel_run();
    if (wrong) {
        emit shown(nullptr);
        emit status(tr("a value is missing"));
        return;
    }
    emit status(tr("running..."));
    settle_.start();
}

bool Preview::begin()
{
    due_ = false;
    try {
        if (run_.start())
            return true;
    } catch (const std::exception& error) {
        emit status(tr("none: %1").arg(to_qt(std::string_view(error.what()))));
        return false;
    }
    done_ = std::make_unique<QSocketNotifier>(run_.done_signal(), QSocketNotifier::Read);
    connect(done_.get(), &QSocketNotifier::activated, this, &Preview::take);
    if (!decided_)
        too_long_.start();
    emit status(tr("running..."));
    return false;
}

void Preview::take()
{
    too_long_.stop();
    done_->setEnabled(false); // it is telling this right now, and its file is about to be closed
    done_.release()->deleteLater();
    std::shared_ptr<PreviewMesh> mesh;
    try {
        mesh = std::make_shared<PreviewMesh>(run_.take());
    } catch (const std::exception& error) {
        emit shown(nullptr);
        emit status(tr("none: %1").arg(to_qt(std::string_view(error.what()))));
        return;
    }
    const QLocale numbers;
    if (mesh->errors.empty())
        emit status(tr("%1 points, %2 polygons would be added")
                        .arg(numbers.toString(static_cast<qulonglong>(mesh->points)),
                             numbers.toString(static_cast<qulonglong>(mesh->polygons))));
    else
        emit status(tr("none: %1").arg(to_qt(std::string_view(mesh->errors.front().line1))));
    emit shown(std::move(mesh));
}

void Preview::give_up_as_slow()
{
    cancel_run();
    on_ = false;
    emit shown(nullptr);
    emit switched(false);
    emit status(tr("off: a run of this scene takes longer than a second"));
}

} // namespace desktop
