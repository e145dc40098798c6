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

/// What the window shows at a moment.
struct ShownView {
    std::shared_ptr<const picture::Scene> scene;
    picture::View view;
    picture::Look look;
    double scale = 1.0; ///< pixels of the view for one of the desktop's units
};

/// A picture of what is shown, in full quality: `passes` samples for each pixel. For a picture
/// that is narrower in its proportions the camera stands back, so that the sides of the view are
/// in it. None when it was cancelled.
[[nodiscard]] std::optional<picture::Image>
draw_view(const ShownView& shown, const PictureOptions& options, unsigned passes, WorkState& state);

} // namespace desktop
