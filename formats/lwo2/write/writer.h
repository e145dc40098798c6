// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

#include "formats/lwo2/write/limits.h"
#include "formats/warnings.h"
#include "mesh/document.h"

namespace formats::lwo2 {

/// `formats::write_lwo2` with other limits, for tests.
[[nodiscard]] std::vector<std::byte> write_bytes(const mesh::Document& document,
                                                 const WarningSink& warnings, const Limits& limits);

/// `formats::write_lwo2_file` with other limits, for tests.
void write_file(const mesh::Document& document, const std::filesystem::path& path,
                const WarningSink& warnings, const Limits& limits);

} // namespace formats::lwo2
