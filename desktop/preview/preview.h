// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include "desktop/preview/forked_run.h"

class QSocketNotifier;

namespace desktop {

/// Previews for one open panel: decides when a run is tried out, hands its mesh on, and says what
/// it is doing. The trial itself is begun from the loop that shows the panel, because it parts the
/// process there.
class Preview : public QObject {
    Q_OBJECT

public:
    explicit Preview(QObject* parent);
    ~Preview() override;

    /// Whether previews are made. While nobody has decided, they are switched off by a run that
    /// takes longer than a second, and on again as soon as the values change.
    [[nodiscard]] bool on() const noexcept { return on_; }
    /// A person decides; it holds until the window is closed.
    void switch_by_person(bool on);

    /// A panel opens: a first preview is due.
    void open();
    /// A panel closes: the run that is tried out ends where it is.
    void close();
    /// The values of the panel changed: the run that is tried out is given up, and a new trial is
    /// due when nothing has changed for a moment. With `wrong`, values are missing: there is none.
    void values_changed(bool wrong);

    /// Whether a trial should begin now.
    [[nodiscard]] bool due() const noexcept { return due_; }
    /// Begins it. Returns true in the child, which then must come to its end through `run()`.
    /// @param clones  how many clones the panel asks for, where it says so
    [[nodiscard]] bool begin(std::optional<int> clones);
    [[nodiscard]] ForkedRun& run() noexcept { return run_; }

    /// The mesh that was handed on is to be seen now.
    void mesh_is_drawn();

signals:
    /// A preview is there; null: none is wanted any more.
    void shown(std::shared_ptr<const desktop::PreviewMesh> mesh);
    /// The mesh that was handed on last is out of date; what is not drawn yet need not be. One that
    /// is drawn stays until the next one comes.
    void outdated();
    /// How it stands, in a few words.
    void status(const QString& text);
    void switched(bool on);

private:
    void take_result();
    void cancel_run();
    void give_up_as_slow();
    void show_nothing(const QString& reason);
    void tell_running();

    ForkedRun run_;
    std::unique_ptr<QSocketNotifier> done_;
    QTimer settle_;   ///< runs while values change
    QTimer too_long_; ///< runs with a trial that nobody has asked for
    QTimer second_;   ///< ticks while a trial runs
    QElapsedTimer since_begin_;
    std::optional<int> clones_; ///< that the trial was asked for
    QString taken_;             ///< what the mesh that was handed on last holds, in words
    QString drawn_;             ///< what the view shows, in words; empty: nothing
    bool open_ = false;
    bool on_ = true;
    bool slow_ = false;    ///< off by itself, for the values of the moment
    bool decided_ = false; ///< by a person
    bool wrong_ = false;   ///< a value is missing
    bool due_ = false;
};

} // namespace desktop
