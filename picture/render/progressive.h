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

/// How a piece of work on a picture is done. None of it changes the result.
struct Work {
    unsigned threads = 0;                      ///< 0: one for each core
    const std::atomic<bool>* cancel = nullptr; ///< once true, no further tile is begun
    std::function<void(std::size_t done, std::size_t tiles)> progress =
        {}; ///< told after tiles; on
            ///< the calling thread
};

/// A picture that gets better with every pass. Each pass adds one sample to each pixel; after a
/// number of passes the picture is the same to the last bit, however many threads made it and
/// however often it was cancelled and gone on with.
///
/// One thread at a time may use it; within a call it uses several.
class Progressive {
public:
    /// The scene is shared: it may be let go elsewhere while this lives.
    Progressive(std::shared_ptr<const Scene> scene, const View& view, Look look);
    Progressive(const Progressive&) = delete;
    Progressive& operator=(const Progressive&) = delete;
    ~Progressive();

    /// A first impression: one sample for each square of `step` by `step` pixels. Pixels that have
    /// a sample of a pass do not show it. Returns false when it was cancelled.
    bool coarse(int step, const Work& work = {});

    /// Adds one sample to each pixel, or goes on with the pass that was cancelled. Returns false
    /// when it was cancelled; the tiles that were finished stay.
    bool add_pass(const Work& work = {});

    /// Finished passes.
    [[nodiscard]] unsigned passes() const noexcept { return passes_; }

    [[nodiscard]] const View& view() const noexcept { return view_; }

    /// The picture as far as it is: tone mapped, encoded for a screen. A pixel without any sample
    /// shows the backdrop; what that lets through is transparent.
    [[nodiscard]] Image image() const;

private:
    using TileWork = std::function<void(std::size_t tile)>;
    using TileTest = std::function<bool(std::size_t tile)>;

    /// The pixels of a tile, the right and lower border excluded.
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
    std::vector<ShadedSample> sums_;         ///< of the samples of each pixel
    std::vector<ShadedSample> coarse_;       ///< first impression of each pixel, or empty
    std::vector<std::uint32_t> tile_passes_; ///< how many samples the tile's pixels have
};

} // namespace picture
