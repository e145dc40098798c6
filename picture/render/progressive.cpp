// SPDX-License-Identifier: MIT
#include "picture/render/progressive.h"

#include <algorithm>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "picture/image/colour.h"
#include "picture/render/shader.h"

namespace picture {

namespace {

constexpr int tile_size = 32;

int tiles_over(int pixels) { return (pixels + tile_size - 1) / tile_size; }

/// Converts a sample to RGBA; partly transparent pixels are un-premultiplied.
void encode(const ShadedSample& seen, std::uint8_t* pixel)
{
    const bool in_part = seen.cover > 0.0F && seen.cover < 1.0F;
    const Float3 linear = in_part ? seen.light * (1.0F / seen.cover) : seen.light;
    pixel[0] = to_byte(to_screen(tone_map(linear.x)));
    pixel[1] = to_byte(to_screen(tone_map(linear.y)));
    pixel[2] = to_byte(to_screen(tone_map(linear.z)));
    pixel[3] = to_byte(seen.cover);
}

ShadedSample mean(const ShadedSample& sum, std::uint32_t count)
{
    const auto samples = static_cast<float>(count);
    return {sum.light * (1.0F / samples), sum.cover / samples};
}

} // namespace

Progressive::Progressive(std::shared_ptr<const Scene> scene, const View& view, Look look)
    : view_(view), shader_(std::make_unique<const Shader>(std::move(scene), view, std::move(look))),
      tiles_across_(tiles_over(view.width())),
      sums_(static_cast<std::size_t>(view.width()) * static_cast<std::size_t>(view.height()),
            ShadedSample{{}, 0.0F}),
      tile_passes_(static_cast<std::size_t>(tiles_across_) *
                   static_cast<std::size_t>(tiles_over(view.height())))
{}

Progressive::~Progressive() = default;

/// Distributes the unfinished tiles to worker threads. The calling thread works, too, and reports
/// progress.
bool Progressive::for_each_tile(const Work& work, const TileWork& make, const TileTest& is_done)
{
    const std::size_t count = tile_passes_.size();
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> done{0};
    std::atomic<bool> cancelled{false};
    const auto run = [&](bool tells) {
        for (std::size_t tile = next++; tile < count; tile = next++) {
            if (work.cancel != nullptr && *work.cancel) {
                cancelled = true;
                return;
            }
            if (!is_done(tile))
                make(tile);
            const std::size_t now = ++done;
            if (tells && work.progress)
                work.progress(now, count);
        }
    };
    {
        const unsigned threads =
            work.threads != 0 ? work.threads : std::max(1U, std::thread::hardware_concurrency());
        std::vector<std::jthread> helpers;
        try {
            for (unsigned i = 1; i < threads; ++i)
                helpers.emplace_back(run, false);
        } catch (const std::system_error&) {
            // Continue with fewer threads: the result is the same.
        }
        run(true);
    }
    return !cancelled;
}

bool Progressive::coarse(int step, const Work& work)
{
    if (coarse_.empty()) {
        coarse_.resize(sums_.size());
        for (int y = 0; y < view_.height(); ++y)
            std::fill_n(coarse_.begin() + static_cast<std::ptrdiff_t>(y) * view_.width(),
                        view_.width(), shader_->background_at(y + 0.5));
    }
    return for_each_tile(
        work, [&](std::size_t tile) { coarse_tile(tile, step); },
        [&](std::size_t tile) { return tile_passes_[tile] > 0; });
}

bool Progressive::add_pass(const Work& work)
{
    const bool finished = for_each_tile(
        work, [&](std::size_t tile) { render_tile(tile); },
        [&](std::size_t tile) { return tile_passes_[tile] > passes_; });
    if (finished)
        ++passes_;
    return finished;
}

Progressive::Area Progressive::area_of(std::size_t tile) const noexcept
{
    const int left = static_cast<int>(tile) % tiles_across_ * tile_size;
    const int top = static_cast<int>(tile) / tiles_across_ * tile_size;
    return {left, top, std::min(left + tile_size, view_.width()),
            std::min(top + tile_size, view_.height())};
}

std::size_t Progressive::pixel(int x, int y) const noexcept
{
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(view_.width()) +
           static_cast<std::size_t>(x);
}

void Progressive::render_tile(std::size_t tile)
{
    const Area area = area_of(tile);
    for (int y = area.top; y < area.bottom; ++y) {
        for (int x = area.left; x < area.right; ++x) {
            const Samples samples(x, y, tile_passes_[tile]);
            const Sample2 place = samples.draw(SampleUse::pixel);
            const ShadedSample seen = shader_->sample(x + static_cast<double>(place.x),
                                                      y + static_cast<double>(place.y), samples);
            ShadedSample& sum = sums_[pixel(x, y)];
            sum = {sum.light + seen.light, sum.cover + seen.cover};
        }
    }
    ++tile_passes_[tile];
}

void Progressive::coarse_tile(std::size_t tile, int step)
{
    const Area area = area_of(tile);
    for (int y = area.top; y < area.bottom; y += step) {
        for (int x = area.left; x < area.right; x += step) {
            const int right = std::min(x + step, area.right);
            const int bottom = std::min(y + step, area.bottom);
            const ShadedSample seen =
                shader_->sample((x + right) / 2.0, (y + bottom) / 2.0, Samples(x, y, 0));
            for (int row = y; row < bottom; ++row)
                for (int column = x; column < right; ++column)
                    coarse_[pixel(column, row)] = seen;
        }
    }
}

Image Progressive::image() const
{
    Image image(view_.width(), view_.height());
    for (std::size_t tile = 0; tile < tile_passes_.size(); ++tile) {
        const Area area = area_of(tile);
        const std::uint32_t count = tile_passes_[tile];
        for (int y = area.top; y < area.bottom; ++y) {
            const ShadedSample behind = shader_->background_at(y + 0.5);
            for (int x = area.left; x < area.right; ++x) {
                ShadedSample seen = behind;
                if (count != 0)
                    seen = mean(sums_[pixel(x, y)], count);
                else if (!coarse_.empty())
                    seen = coarse_[pixel(x, y)];
                encode(seen, image.at(x, y));
            }
        }
    }
    return image;
}

} // namespace picture
