// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "formats/lwo2/read/cursor.h"
#include "formats/warnings.h"

namespace formats::lwo2 {

/// State shared by all parts of the reader for one file: the warnings.
class Reading {
public:
    explicit Reading(const WarningSink& sink) : sink_(sink) {}

    /// Forwards a warning to the sink; at most 100 per file.
    void warn(mesh::FourCC chunk, std::uint64_t offset, const std::string& text)
    {
        constexpr int most = 100;
        if (!sink_ || warned_ > most)
            return;
        if (warned_++ == most)
            sink_("further warnings about this file are left out");
        else
            sink_(fmt::format("chunk {} at byte {}: {}", mesh::to_text(chunk), offset, text));
    }

private:
    const WarningSink& sink_;
    int warned_ = 0;
};

} // namespace formats::lwo2
