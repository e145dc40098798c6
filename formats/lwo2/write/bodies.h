// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "formats/lwo2/write/encoder.h"
#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// The data from which the chunk of a step is encoded. For chunks outside layers, layer and layout
/// are null.
struct BodySource {
    const mesh::Document& document;
    const mesh::Layer* layer = nullptr;
    const Layout* layout = nullptr; ///< layout of the layer or of a part of it
};

/// The chunk id of a step.
[[nodiscard]] mesh::FourCC step_id(const Step& step) noexcept;

/// Size of the chunk's body in bytes, without padding; exactly what `write_body` writes.
[[nodiscard]] std::uint64_t body_size(const BodySource& source, const Step& step);

/// Writes the chunk's body, without padding.
void write_body(const BodySource& source, const Step& step, Encoder& out);

/// The default description of a surface that has none: light grey, fully diffuse.
[[nodiscard]] std::uint64_t plain_surface_size(const std::string& name);
void write_plain_surface(const std::string& name, Encoder& out);

} // namespace formats::lwo2
