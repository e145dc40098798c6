// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/arguments/command_line.h"
#include "picture/view/camera.h"

namespace cli {

/// How a picture is to be made.
struct PictureRequest {
    int width = 1280;
    int height = 720;
    picture::StandardView view = picture::StandardView::perspective;
    std::optional<double> azimuth_deg;   ///< none: the view's
    std::optional<double> elevation_deg; ///< none: the view's
    double zoom = 1.0;                   ///< 1 shows the whole mesh
    std::string color_by;                ///< a vertex map; empty: the colours of the surfaces
    bool wireframe = false;
    unsigned samples = 32;
};

/// The options of a picture.
class PictureArguments {
public:
    /// Adds them to a command line, which has to live as long as this.
    explicit PictureArguments(CommandLine& line);
    PictureArguments(const PictureArguments&) = delete;
    PictureArguments& operator=(const PictureArguments&) = delete;

    /// Judges what was parsed. @throws UsageError
    [[nodiscard]] PictureRequest request() const;

private:
    CommandLine& line_;
    std::string size_;
    std::string view_;
    std::string azimuth_;
    std::string elevation_;
    std::string zoom_;
    std::string color_by_;
    std::string samples_;
    bool wireframe_ = false;
};

} // namespace cli
