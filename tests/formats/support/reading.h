// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/errors.h"
#include "formats/lwo2_reader.h"
#include "tests/formats/support/samples.h"

namespace test {

/// Reads a file that must be sound and give no warning.
[[nodiscard]] inline mesh::Document read_clean(const File& file)
{
    return formats::read_lwo2(
        file, [](const std::string& text) { ADD_FAILURE() << "unexpected warning: " << text; });
}

/// Reads a file and gives the warnings.
[[nodiscard]] inline std::vector<std::string> warnings_of(const File& file)
{
    std::vector<std::string> warnings;
    static_cast<void>(
        formats::read_lwo2(file, [&](const std::string& text) { warnings.push_back(text); }));
    return warnings;
}

/// The message of the fault that reading a file meets; empty when it meets none.
[[nodiscard]] inline std::string fault_of(const File& file)
{
    // a buffer of exactly the size lets the address sanitizer see a read past the end
    const File exact(file.begin(), file.end());
    try {
        static_cast<void>(formats::read_lwo2(exact, {}));
    } catch (const formats::FormatError& fault) {
        return fault.what();
    }
    return {};
}

/// The values of a map at a point, as a vector that can be compared.
[[nodiscard]] inline std::vector<float> value_at(const mesh::VertexMap& map, std::uint32_t point)
{
    const auto value = map.find(point);
    return {value.begin(), value.end()};
}

} // namespace test
