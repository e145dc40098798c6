// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "picture/image/image.h"
#include "picture/render/look.h"
#include "picture/scene/scene.h"
#include "picture/view/view.h"

namespace picture {

class Shader;
struct ShadedSample;

/// Execution options of a rendering call. They do not affect the result.
struct Work {
    unsigned threads = 0;                      ///< 0: one per core
    const std::atomic<bool>* cancel = nullptr; ///< set to true to cancel after the current tiles
    std::function<void(std::size_t done, std::size_t tiles)> progress = {}; ///< called after
                                                                            ///< tiles, on the
                                                                            ///< calling thread
};

/// Progressive rendering of a picture. Each pass adds one sample per pixel. The picture after a
/// number of passes is bit-identical for any number of threads and any cancellations in between.
///
/// Not thread-safe; each call uses several threads internally.
class Progressive {
public:
    /// Shares ownership of the scene.
    Progressive(std::shared_ptr<const Scene> scene, const View& view, Look look);
    Progressive(const Progressive&) = delete;
    Progressive& operator=(const Progressive&) = delete;
    ~Progressive();

    /// Renders a coarse preview: one sample per square of `step` by `step` pixels. Pixels that
    /// already have samples of a pass keep them. Returns false if it was cancelled.
    bool coarse(int step, const Work& work = {});

    /// Adds one sample to each pixel, or continues a cancelled pass. Returns false if it was
    /// cancelled; finished tiles are kept.
    bool add_pass(const Work& work = {});

    /// Number of finished passes.
    [[nodiscard]] unsigned passes() const noexcept { return passes_; }

    [[nodiscard]] const View& view() const noexcept { return view_; }

    /// The current picture, tone-mapped, in sRGB. Pixels without samples show the background, which
    /// may be transparent.
    [[nodiscard]] Image image() const;

private:
    using TileWork = std::function<void(std::size_t tile)>;
    using TileTest = std::function<bool(std::size_t tile)>;

    /// The pixels of a tile; `right` and `bottom` are exclusive.
    struct Area {
        int left;
        int top;
        int right;
        int bottom;
    };

    bool for_each_tile(const Work& work, const TileWork& make, const TileTest& is_done);
    [[nodiscard]] Area area_of(std::size_t tile) const noexcept;
    [[nodiscard]] std::size_t pixel(int x, int y) const noexcept;
    void render_tile(std::size_t tile);
    void coarse_tile(std::size_t tile, int step);

    View view_;
    std::unique_ptr<const Shader> shader_;
    int tiles_across_;
    unsigned passes_ = 0;
    std::vector<ShadedSample> sums_;         ///< sum of the samples of each pixel
    std::vector<ShadedSample> coarse_;       ///< coarse sample of each pixel, or empty
    std::vector<std::uint32_t> tile_passes_; ///< samples per pixel, by tile
};

} // namespace picture
