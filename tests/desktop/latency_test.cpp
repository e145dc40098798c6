// SPDX-License-Identifier: MIT
// How long the window takes to answer while a large result is being drawn. Measured and told; a
// slow machine is no fault of the window.
#include <algorithm>
#include <cmath>
#include <vector>

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include "desktop/window/main_window.h"
#include "formats/lwo2_writer.h"
#include "tests/desktop/support.h"
#include "tests/support/sanitizers.h"

namespace {

#if defined(NDEBUG) && !defined(ADDRESS_SANITIZER)
constexpr std::size_t wanted_points = 10'000'000;
#else
constexpr std::size_t wanted_points = 200'000;
#endif

/// A field of pyramids, of five points each.
mesh::Document field_of_pyramids(std::size_t points)
{
    mesh::Document document;
    mesh::Layer& layer = document.layers.emplace_back();
    const std::size_t count = points / 5;
    const auto side = static_cast<std::size_t>(std::sqrt(static_cast<double>(count))) + 1;
    layer.points.reserve(count * 5);
    layer.polygons.reserve(count * 4, count * 12);
    for (std::size_t i = 0; i < count; ++i) {
        const auto x = static_cast<double>(i % side);
        const auto z = static_cast<double>(i / side);
        const auto first = static_cast<std::uint32_t>(layer.points.size());
        for (const mesh::Vec3& corner : {mesh::Vec3{x, 0, z},
                                         {x, 0, z + 0.8},
                                         {x + 0.8, 0, z + 0.8},
                                         {x + 0.8, 0, z},
                                         {x + 0.4, 0.9, z + 0.4}})
            layer.points.push_back(corner);
        for (std::uint32_t k = 0; k < 4; ++k) {
            const std::uint32_t face[] = {first + k, first + (k + 1) % 4, first + 4};
            layer.polygons.add(mesh::polygon_face, face);
        }
    }
    return document;
}

class LatencyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void answers_while_a_large_result_is_drawn()
    {
        const QTemporaryDir folder;
        const std::filesystem::path file = folder.filePath("large.lwo").toStdString();
        formats::write_lwo2_file(field_of_pyramids(wanted_points), file);
        desktop::MainWindow window;
        window.resize(1100, 700);
        window.show();
        std::vector<qint64> gaps;
        QElapsedTimer since;
        QTimer beat;
        connect(&beat, &QTimer::timeout, &beat, [&] {
            gaps.push_back(since.nsecsElapsed());
            since.restart();
        });
        QElapsedTimer whole;
        whole.start();
        QVERIFY(window.open({file}));
        const qint64 read_ms = whole.restart();
        since.start();
        beat.start(1);
        // From here on the scene is made and drawn, and the view turned all the time.
        QVERIFY(QTest::qWaitFor([&] { return !window.tracer().reading(); }, 240000));
        const qint64 made_ms = whole.restart();
        for (int i = 0; i < 40; ++i) {
            window.viewport().orbit(3.0, 0.0);
            QTest::qWait(50);
        }
        QVERIFY(QTest::qWaitFor([&] { return window.tracer().passes() >= 1; }, 240000));
        QVERIFY(!window.viewport().image().isNull());
        beat.stop();
        std::sort(gaps.begin(), gaps.end());
        const auto at = [&](double share) {
            return static_cast<double>(gaps[static_cast<std::size_t>(
                       share * static_cast<double>(gaps.size() - 1))]) /
                   1e6;
        };
        qInfo(
            "%zu points: read in %lld ms, scene made in %lld ms; %zu beats of the window while it "
            "was made and drawn: half within %.1f ms, 99 %% within %.1f ms, the longest %.1f ms",
            wanted_points, static_cast<long long>(read_ms), static_cast<long long>(made_ms),
            gaps.size(), at(0.5), at(0.99), at(1.0));
        QVERIFY(gaps.size() > 100);
    }
};

} // namespace

int main(int count, char** arguments)
{
    LatencyTest tests;
    return support::run_tests(tests, count, arguments);
}

#include "latency_test.moc"
