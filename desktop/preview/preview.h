// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include <QObject>
#include <QString>
#include <QTimer>

#include "desktop/preview/forked_run.h"

class QSocketNotifier;

namespace desktop {

/// Previews for one open panel: decides when a run is tried out, and hands its mesh on. The trial
/// itself is begun from the loop that shows the panel, because it parts the process there.
class Preview : public QObject {
    Q_OBJECT

public:
    explicit Preview(QObject* parent);
    ~Preview() override;

    /// Whether previews are made. While nobody has decided, they are switched off by the first one
    /// that takes longer than a second.
    [[nodiscard]] bool on() const noexcept { return on_; }
    /// A person decides; it holds until the window is closed.
    void switch_by_person(bool on);

    /// A panel opens: a first preview is due.
    void open();
    /// A panel closes: the run that is tried out ends where it is.
    void close();
    /// The values of the panel changed: what is tried out is out of date, and a new trial is due
    /// when nothing has changed for a moment. With `wrong`, values are missing: there is none.
    void values_changed(bool wrong);

    /// Whether a trial should begin now.
    [[nodiscard]] bool due() const noexcept { return due_; }
    /// Begins it. Returns true in the child, which then must come to its end through `run()`.
    [[nodiscard]] bool begin();
    [[nodiscard]] ForkedRun& run() noexcept { return run_; }

signals:
    /// A preview is there; null: the one that was shown is out of date or not wanted any more.
    void shown(std::shared_ptr<const desktop::PreviewMesh> mesh);
    /// How it stands, in a few words.
    void status(const QString& text);
    void switched(bool on);

private:
    void take();
    void cancel_run();
    void give_up_as_slow();

    ForkedRun run_;
    std::unique_ptr<QSocketNotifier> done_;
    QTimer settle_;   ///< runs while values change
    QTimer too_long_; ///< runs with a trial that nobody has asked for
    bool open_ = false;
    bool on_ = true;
    bool decided_ = false; ///< by a person
    bool due_ = false;
};

} // namespace desktop
