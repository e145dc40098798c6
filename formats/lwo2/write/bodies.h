// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "formats/lwo2/write/encoder.h"
#include "formats/lwo2/write/layout.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// What the body of a step's chunk is made from. Steps outside layers have neither layer nor
/// layout.
struct BodySource {
    const mesh::Document& document;
    const mesh::Layer* layer = nullptr;
    const Layout* layout = nullptr; ///< of the layer, or of a part of it
};

/// The four characters of a step's chunk.
[[nodiscard]] mesh::FourCC step_id(const Step& step) noexcept;

/// Size of the chunk's body in bytes, without filler; exactly what `write_body` writes.
[[nodiscard]] std::uint64_t body_size(const BodySource& source, const Step& step);

/// Writes the chunk's body, without filler, as the format has it.
void write_body(const BodySource& source, const Step& step, Encoder& out);

/// The plain description of a surface that has none: a light grey, fully diffuse.
[[nodiscard]] std::uint64_t plain_surface_size(const std::string& name);
void write_plain_surface(const std::string& name, Encoder& out);

} // namespace formats::lwo2
