// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "desktop/pictures/picture_options.h"
#include "desktop/window/work_box.h"
#include "picture/image/image.h"
#include "picture/render/look.h"
#include "picture/scene/scene.h"
#include "picture/view/view.h"

namespace desktop {

/// A snapshot of what the viewport shows.
struct ShownView {
    std::shared_ptr<const picture::Scene> scene;
    picture::View view;
    picture::Look look;
    double scale = 1.0; ///< device pixel ratio
};

/// Renders the view with `passes` samples per pixel. If the picture has a smaller aspect ratio than
/// the view, the camera is moved back so that the full width stays visible. Empty if cancelled.
[[nodiscard]] std::optional<picture::Image>
draw_view(const ShownView& shown, const PictureOptions& options, unsigned passes, WorkState& state);

} // namespace desktop
