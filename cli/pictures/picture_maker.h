// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "cli/console/output.h"
#include "cli/pictures/picture_request.h"
#include "mesh/document.h"

namespace cli {

/// Checks before the work that the picture can be written. @throws Failure (output)
void validate_picture_output(const std::string& name);

/// Renders the documents as one scene and writes the picture atomically, or to standard output.
/// Returns the number of triangles.
/// @throws UsageError for a map that no document has; Failure (output)
std::size_t make_picture(std::span<const mesh::Document> documents, const PictureRequest& request,
                         const std::string& name, Console& console);

} // namespace cli
