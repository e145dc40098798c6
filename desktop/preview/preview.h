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

/// Controls the previews of an open panel: schedules trial runs, forwards their meshes, and reports
/// the status. The trial run itself is started by the loop that shows the panel (`due`, `begin`),
/// since the process forks there.
class Preview : public QObject {
    Q_OBJECT

public:
    explicit Preview(QObject* parent);
    ~Preview() override;

    /// Whether previews are enabled. Until the user decides, a trial run of more than a second
    /// disables them, and a change of the values enables them again.
    [[nodiscard]] bool on() const noexcept { return on_; }
    /// The user enables or disables previews, until the window is closed.
    void switch_by_person(bool on);

    /// A panel has opened: schedules a first preview.
    void open();
    /// The panel is closing: kills the trial run.
    void close();
    /// The values of the panel have changed: kills the trial run and schedules a new one after a
    /// short delay. With `wrong`, a value is invalid, and none is scheduled.
    void values_changed(bool wrong);

    /// Whether a trial run should start now.
    [[nodiscard]] bool due() const noexcept { return due_; }
    /// Starts it. Returns true in the child, which must then end through `run()`.
    /// @param clones  number of clones in the panel, if known
    [[nodiscard]] bool begin(std::optional<int> clones);
    [[nodiscard]] ForkedRun& run() noexcept { return run_; }

    /// To be called when the mesh of the last `shown` signal has been drawn.
    void mesh_is_drawn();

signals:
    /// A preview is ready; null: remove the preview.
    void shown(std::shared_ptr<const desktop::PreviewMesh> mesh);
    /// The last mesh is out of date: drawing it can be cancelled. If already drawn, it stays until
    /// the next one.
    void outdated();
    /// Status text.
    void status(const QString& text);
    void switched(bool on);

private:
    void take_result();
    void cancel_run();
    void give_up_as_slow();
    void show_nothing(const QString& reason);
    void show_running();

    ForkedRun run_;
    std::unique_ptr<QSocketNotifier> done_;
    QTimer settle_;   ///< delay after a change of values
    QTimer too_long_; ///< time limit of a trial run that the user did not request
    QTimer second_;   ///< updates the status during a trial run
    QElapsedTimer since_begin_;
    std::optional<int> clones_; ///< number of clones of the trial run
    QString taken_;             ///< description of the last forwarded mesh
    QString drawn_;             ///< description of the drawn mesh; empty: none
    bool open_ = false;
    bool on_ = true;
    bool slow_ = false;    ///< disabled automatically for the current values
    bool decided_ = false; ///< the user has enabled or disabled previews
    bool wrong_ = false;   ///< a value is invalid
    bool due_ = false;
};

} // namespace desktop
