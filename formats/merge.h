// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats {

/// Appends all layers of `from` behind those of `into`.
///
/// The tags of `from` are joined to those of `into` by their text. The descriptions of the surfaces
/// that the polygons of `from` use come along, with the images and envelopes they need; images and
/// envelopes get other numbers where theirs are taken, and every reference follows. A surface that
/// both describe alike is shared, and so is one that only one of them describes; where they differ,
/// the incoming one gets a new name with `from_name` in it, and a warning says so. Layer numbers of
/// `from` that are taken change, and parents follow. What `from` says about its file as a whole
/// (author, description, icon) is left out.
///
/// Whatever is thrown, `into` is as it was before; `from` may be spoilt.
///
/// @param from_name  short name of what is appended, such as the file's name without its ending
/// @throws LimitError when there are no layer numbers left, or a surface grows past what the format
///         can hold; std::bad_alloc
void append_document(mesh::Document& into, mesh::Document&& from, std::string_view from_name,
                     const WarningSink& warnings);

} // namespace formats
