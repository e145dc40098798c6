// SPDX-License-Identifier: MIT
#include "desktop/window/progress_box.h"

#include <algorithm>

#include <QCoreApplication>
#include <QVBoxLayout>

#include "desktop/text.h"
#include "desktop/window/front_end.h"

namespace desktop {

namespace {

constexpr int most = 1000; ///< of the bar; a total may be larger than a bar can show
constexpr qint64 between_shows_ms = 30;

} // namespace

ProgressBox::ProgressBox(const QString& title, const QString& caption, QWidget& parent)
    : dialog_(&parent), caption_(new QLabel(&dialog_)), bar_(new QProgressBar(&dialog_)),
      cancel_(new QPushButton(QDialog::tr("Cancel"), &dialog_))
{
    dialog_.setObjectName("progress");
    dialog_.setWindowTitle(without_placeholder(printable(title)));
    caption_->setTextFormat(Qt::PlainText); // the module's words
    caption_->setText(printable_lines(caption));
    dialog_.setWindowModality(Qt::ApplicationModal);
    bar_->setRange(0, most);
    bar_->setAccessibleName(caption);
    cancel_->setToolTip(QDialog::tr("Drop what the command makes; it may have to come to its end"));
    auto* const column = new QVBoxLayout(&dialog_);
    column->addWidget(caption_);
    column->addWidget(bar_);
    column->addWidget(cancel_, 0, Qt::AlignRight);
    dialog_.setMinimumWidth(dialog_.fontMetrics().averageCharWidth() * 50);
    QObject::connect(cancel_, &QPushButton::clicked, &dialog_, &QDialog::reject);
    QObject::connect(&dialog_, &QDialog::rejected, &dialog_, [this] {
        cancelled_ = true;
        cancel_->setEnabled(false);
        caption_->setText(
            QDialog::tr("Stopping. The result will be dropped; nothing will be changed."));
        dialog_.show();
    });
}

void ProgressBox::start(int total)
{
    total_ = total;
    since_shown_.start();
    dialog_.show();
    show_step();
}

bool ProgressBox::step(int steps)
{
    done_ += steps;
    if (since_shown_.elapsed() >= between_shows_ms) {
        show_step();
        since_shown_.restart();
    }
    if (cancelled_ && !cancel_thrown_) {
        cancel_thrown_ = true;
        throw RunCancelled();
    }
    return cancelled_;
}

void ProgressBox::show_step()
{
    if (total_ > 0)
        bar_->setValue(static_cast<int>(std::min<long long>(done_ * most / total_, most)));
    QCoreApplication::processEvents();
}

void ProgressBox::finish() { dialog_.hide(); }

} // namespace desktop
