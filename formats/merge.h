// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Appends all layers of `from` to `into`.
///
/// Tags are merged by string. The descriptions of the surfaces that polygons of `from` use are
/// copied, with the images and envelopes they refer to; images and envelopes whose number is in use
/// are renumbered, with all references to them. A surface with the same description in both
/// documents, or described in only one, is shared. If the descriptions differ, the surface of
/// `from` is renamed, with `from_name` in its new name, and a warning is given. Layer numbers of
/// `from` that are in use change, with references to parents. Chunks of `from` about the whole file
/// (author, description, icon) are dropped.
///
/// On an exception `into` is unchanged; `from` is unspecified.
///
/// @param from_name  short name of `from`, such as its file name without extension
/// @throws LimitError if there are no free layer numbers, or a surface exceeds a size limit of the
///         format; std::bad_alloc
void append_document(mesh::Document& into, mesh::Document&& from, std::string_view from_name,
                     const WarningSink& warnings);

} // namespace formats
