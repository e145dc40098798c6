// SPDX-License-Identifier: MIT
#include "cli/pictures/picture_request.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "cli/errors.h"
#include "settings/nearest.h"
#include "settings/values.h"

namespace cli {

namespace {

using picture::StandardView;

constexpr int most_pixels_a_side = 16384;
constexpr std::int64_t most_pixels = 1 << 26;
constexpr std::int64_t most_samples = 65536;

constexpr std::array<std::pair<std::string_view, StandardView>, 7> views{{
    {"persp", StandardView::perspective},
    {"front", StandardView::front},
    {"back", StandardView::back},
    {"left", StandardView::left},
    {"right", StandardView::right},
    {"top", StandardView::top},
    {"bottom", StandardView::bottom},
}};

StandardView parse_view(const std::string& text)
{
    std::vector<std::string> names;
    for (const auto& [name, view] : views) {
        if (name == text)
            return view;
        names.emplace_back(name);
    }
    throw UsageError(fmt::format("--view: there is no view '{}'; there are {}{}", text,
                                 fmt::join(names, ", "), settings::did_you_mean(text, names)));
}

/// WIDTHxHEIGHT
std::pair<int, int> parse_size(const std::string& text)
{
    const auto refuse = [&](const std::string& reason) {
        throw UsageError(fmt::format("--size: {}", reason));
    };
    const std::size_t times = text.find_first_of("xX");
    const std::string form = "write WIDTHxHEIGHT in pixels, as in 1280x720";
    if (times == std::string::npos)
        refuse(fmt::format("'{}' is no size; {}", text, form));
    std::pair<int, int> size;
    try {
        size.first = static_cast<int>(
            settings::parse_whole_number(text.substr(0, times), 1, most_pixels_a_side));
        size.second = static_cast<int>(
            settings::parse_whole_number(text.substr(times + 1), 1, most_pixels_a_side));
    } catch (const settings::ValueError& error) {
        refuse(fmt::format("{}; {}", error.what(), form));
    }
    if (std::int64_t{size.first} * size.second > most_pixels)
        refuse(fmt::format("{} has too many pixels; a picture may have {}", text, most_pixels));
    return size;
}

double parse_number(const char* option, const std::string& text, double lowest, double highest)
{
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) {
        std::string with_point = text;
        std::replace(with_point.begin(), with_point.end(), ',', '.');
        throw UsageError(
            fmt::format("{}: '{}' is not a number{}", option, text,
                        with_point != text ? fmt::format("; write {}", with_point) : ""));
    }
    if (number < lowest || number > highest)
        throw UsageError(fmt::format("{}: {} is out of range; it must lie in {} .. {}", option,
                                     text, lowest, highest));
    return number;
}

} // namespace

PictureArguments::PictureArguments(CommandLine& line) : line_(line)
{
    const PictureRequest standard;
    const picture::Camera camera;
    const std::string looking = "looking";
    line.add_value("--view", view_, "VIEW",
                   "persp, front, back, left, right, top or bottom (default persp); front shows "
                   "what looks forward, along z",
                   looking);
    line.add_value("--azimuth", azimuth_, "DEGREES",
                   fmt::format("where the viewer stands around the mesh: 0 behind, 90 at the "
                               "right, 180 in front (default {})",
                               camera.azimuth_deg),
                   looking);
    line.add_value(
        "--elevation", elevation_, "DEGREES",
        fmt::format("how high the viewer stands, -90 to 90 (default {})", camera.elevation_deg),
        looking);
    line.add_value("--zoom", zoom_, "FACTOR",
                   "how much larger than the whole mesh just fits (default 1)", looking);
    const std::string drawing = "drawing";
    line.add_value("--color-by", color_by_, "MAP",
                   "colour by this weight map in place of surfaces, with a legend", drawing);
    line.add_flag("--wireframe", wireframe_, "draw the edges of the polygons", drawing);
    line.add_value(
        "--size", size_, "WIDTHxHEIGHT",
        fmt::format("pixels of the picture (default {}x{})", standard.width, standard.height),
        drawing);
    line.add_value(
        "--samples", samples_, "N",
        fmt::format("samples of each pixel; more give less grain (default {})", standard.samples),
        drawing);
}

PictureRequest PictureArguments::request() const
{
    constexpr double full_turns = 3600.0;
    PictureRequest request;
    if (line_.was_given("--view"))
        request.view = parse_view(view_);
    if (line_.was_given("--azimuth"))
        request.azimuth_deg = parse_number("--azimuth", azimuth_, -full_turns, full_turns);
    if (line_.was_given("--elevation"))
        request.elevation_deg = parse_number("--elevation", elevation_, -90.0, 90.0);
    if (request.view != StandardView::perspective && (request.azimuth_deg || request.elevation_deg))
        throw UsageError(fmt::format("{}: --view {} looks from one side only; leave one of the two "
                                     "out",
                                     request.azimuth_deg ? "--azimuth" : "--elevation", view_));
    if (line_.was_given("--zoom"))
        request.zoom = parse_number("--zoom", zoom_, 0.01, 10000.0);
    if (line_.was_given("--color-by")) {
        if (color_by_.empty())
            throw UsageError("--color-by: names no map");
        request.color_by = color_by_;
    }
    request.wireframe = wireframe_;
    if (line_.was_given("--size"))
        std::tie(request.width, request.height) = parse_size(size_);
    if (line_.was_given("--samples")) {
        try {
            request.samples =
                static_cast<unsigned>(settings::parse_whole_number(samples_, 1, most_samples));
        } catch (const settings::ValueError& error) {
            throw UsageError(fmt::format("--samples: {}", error.what()));
        }
    }
    return request;
}

} // namespace cli
