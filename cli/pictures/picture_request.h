// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "cli/arguments/command_line.h"
#include "picture/view/camera.h"

namespace cli {

/// The options of a picture.
struct PictureRequest {
    int width = 1280;
    int height = 720;
    picture::StandardView view = picture::StandardView::perspective;
    std::optional<double> azimuth_deg;   ///< empty: that of `view`
    std::optional<double> elevation_deg; ///< empty: that of `view`
    double zoom = 1.0;                   ///< 1 shows the whole mesh
    std::string color_by;                ///< name of a vertex map; empty: colour by surface
    bool wireframe = false;
    unsigned samples = 32;
};

/// The command line options of a picture.
class PictureArguments {
public:
    /// Adds the options to a command line, which must outlive this object.
    explicit PictureArguments(CommandLine& line);
    PictureArguments(const PictureArguments&) = delete;
    PictureArguments& operator=(const PictureArguments&) = delete;

    /// Validates the parsed options. @throws UsageError
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
